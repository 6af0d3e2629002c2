#include "model/TntModel.h"

#include <QCoreApplication>

#include <QCollator>
#include <QLocale>

namespace {

QCollatorSortKey sortKeyOf(const QString &name)
{
    // One collator per thread: models are built on workers and updated on the main thread.
    thread_local const QCollator collator = [] {
        // The C locale collates by code point and ignores numeric mode: order as English then.
        QLocale locale;
        if (locale.language() == QLocale::C)
            locale = QLocale(QLocale::English);
        QCollator made(locale);
        made.setNumericMode(true);
        made.setCaseSensitivity(Qt::CaseInsensitive);
        return made;
    }();
    return collator.sortKey(name);
}

template <typename T, typename Incoming>
void take(T &field, const Incoming &incoming, TntModel::Field flag, TntModel::Fields &changed)
{
    if (incoming && field != *incoming) {
        field = *incoming;
        changed |= flag;
    }
}

// A speed shows averaged over the window; the change is that of the shown value.
void takeRate(qint64 &field, DataRateBuffer &buffer, const API::Maybe<qint64> &incoming, TntModel::Field flag,
              TntModel::Fields &changed)
{
    if (!incoming)
        return;
    buffer.add(*incoming);
    take(field, std::optional(buffer.shownRate(*incoming)), flag, changed);
}

} // namespace

QString TntModel::Tracker::statusText(Status status)
{
    switch (status) {
    case Status::disabled: return QCoreApplication::translate("TntModel", "Disabled");
    case Status::notContacted: return QCoreApplication::translate("TntModel", "Not contacted yet");
    case Status::contacted: return QCoreApplication::translate("TntModel", "Working");
    case Status::updating: return QCoreApplication::translate("TntModel", "Updating");
    case Status::notWorking: return QCoreApplication::translate("TntModel", "Not working");
    }
    Q_UNREACHABLE();
}

TntModel::TntModel(QString hash, const API::STntModel &record, int averagingWindow)
    : m_id(std::move(hash))
{
    setAveragingWindow(averagingWindow);
    update(record);
    if (!m_nameSortKey)
        m_nameSortKey = sortKeyOf(m_name);
}

void TntModel::setAveragingWindow(int samples)
{
#define QUILLO_FIELD_WINDOW_kept(member)
#define QUILLO_FIELD_WINDOW_rate(member) m_##member##Buffer.setCapacity(samples);
#define QUILLO_FIELD_WINDOW_wire(member)
#define QUILLO_FIELD_WINDOW(member, Bit, Type, decoding, role) QUILLO_FIELD_WINDOW_##role(member)
    QUILLO_TNT_FIELDS(QUILLO_FIELD_WINDOW)
}

TntModel::Fields TntModel::update(const API::STntModel &d)
{
    Fields changed = 0;
#define QUILLO_FIELD_TAKE_kept(member, Bit) take(m_##member, d.member, Bit, changed);
#define QUILLO_FIELD_TAKE_rate(member, Bit) takeRate(m_##member, m_##member##Buffer, d.member, Bit, changed);
#define QUILLO_FIELD_TAKE_wire(member, Bit)
#define QUILLO_FIELD_TAKE(member, Bit, Type, decoding, role) QUILLO_FIELD_TAKE_##role(member, Bit)
    QUILLO_TNT_FIELDS(QUILLO_FIELD_TAKE)
    if (changed & Name)
        m_nameSortKey = sortKeyOf(m_name);
    return changed;
}

TntModel::Fields TntModel::setState(State state)
{
    Fields changed = 0;
    take(m_state, std::optional(state), StateField, changed);
    return changed;
}

TntModel::Fields TntModel::setCategory(const QString &category)
{
    Fields changed = 0;
    take(m_category, std::optional(category), Category, changed);
    return changed;
}

TntModel::Fields TntModel::setTags(const QString &tags)
{
    Fields changed = 0;
    take(m_tags, std::optional(tags), Tags, changed);
    return changed;
}

QString TntModel::remotePathOf(const QString &relativePath) const
{
    // A server on Windows writes its own separators; file names always use "/".
    const bool windows = m_contentPath.contains(u'\\') && !m_contentPath.contains(u'/');
    const QChar separator = windows ? u'\\' : u'/';
    const QString relative = windows ? QString(relativePath).replace(u'/', separator) : relativePath;
    // The content path is the file itself, the torrent's root folder, or (without a root folder)
    // the folder the files are in: only the last is the save path.
    QString base = m_contentPath;
    const QString top = separator + relative.section(separator, 0, 0);
    if (base != m_savePath && base.endsWith(top))
        base.chop(top.size());
    if (base.endsWith(separator))
        base.chop(1);
    return base + separator + relative;
}

QString TntModel::stateTitle(State state)
{
    switch (state) {
    case State::all: return QCoreApplication::translate("TntModel", "All");
    case State::downloading: return QCoreApplication::translate("TntModel", "Downloading");
    case State::uploading: return QCoreApplication::translate("TntModel", "Seeding");
    case State::stopped:
    case State::pausedDL:
    case State::stoppedDL: return QCoreApplication::translate("TntModel", "Stopped");
    case State::complited:
    case State::pausedUP:
    case State::stoppedUP: return QCoreApplication::translate("TntModel", "Completed");
    case State::queued:
    case State::queuedUP:
    case State::queuedDL: return QCoreApplication::translate("TntModel", "Queued");
    case State::stalled:
    case State::stalledUP:
    case State::stalledDL: return QCoreApplication::translate("TntModel", "Stalled");
    case State::checking:
    case State::checkingUP:
    case State::checkingDL:
    case State::checkingResumeData: return QCoreApplication::translate("TntModel", "Checking");
    case State::moving: return QCoreApplication::translate("TntModel", "Moving");
    case State::error: return QCoreApplication::translate("TntModel", "Error");
    case State::missingFiles: return QCoreApplication::translate("TntModel", "Missing files");
    case State::forcedUP: return QCoreApplication::translate("TntModel", "[F] Seeding");
    case State::forcedDL: return QCoreApplication::translate("TntModel", "[F] Downloading");
    case State::forcedMetaDL: return QCoreApplication::translate("TntModel", "[F] Metadata loading");
    case State::allocating: return QCoreApplication::translate("TntModel", "Allocating disk space");
    case State::metaDL: return QCoreApplication::translate("TntModel", "Metadata loading");
    case State::unknown: return QCoreApplication::translate("TntModel", "Unknown");
    }
    Q_UNREACHABLE();
}

bool TntModel::matches(State state, State filter)
{
    const auto in = [state](std::initializer_list<State> states) {
        return std::find(states.begin(), states.end(), state) != states.end();
    };
    switch (filter) {
    case State::all: return true;
    case State::downloading: return in({State::downloading, State::forcedDL, State::metaDL, State::forcedMetaDL});
    case State::uploading: return in({State::uploading, State::forcedUP});
    case State::stopped: return in({State::pausedDL, State::stoppedDL});
    case State::complited: return in({State::pausedUP, State::stoppedUP});
    case State::queued: return in({State::queuedDL, State::queuedUP});
    case State::stalled: return in({State::stalledUP, State::stalledDL});
    case State::checking: return in({State::checkingUP, State::checkingDL, State::checkingResumeData});
    case State::moving: return state == State::moving;
    case State::error: return in({State::error, State::missingFiles, State::unknown});
    default: return state == filter;
    }
}
