#include "settings/SettingsFile.h"

#include <QFile>
#include <QSettings>

namespace SettingsFile {

namespace {

// The key of the file's last line when that line was cut short: its value is all that is left of
// it, and it must not be read as a whole value.
QString cutKey(const QByteArray &text)
{
    const qsizetype lineStart = text.lastIndexOf('\n') + 1;
    const QByteArray line = text.mid(lineStart);
    const qsizetype equals = line.indexOf('=');
    if (equals <= 0)
        return {};
    QString key = QString::fromUtf8(line.left(equals)).trimmed();
    const qsizetype sectionStart = text.lastIndexOf("\n[", lineStart - 1);
    const QByteArray section = sectionStart < 0
                                   ? text.startsWith('[') ? text.mid(1, text.indexOf(']') - 1) : QByteArray()
                                   : text.mid(sectionStart + 2, text.indexOf(']', sectionStart) - sectionStart - 2);
    if (!section.isEmpty() && section != "General")
        key = QString::fromUtf8(section) + u'/' + key;
    return key;
}

// What is left of a value cut short. A byte array the store wrote lost its closing parenthesis, so
// the store reads it as text starting with its marker; the bytes that came through are kept, for
// the reader of that key to salvage what it can.
QVariant cutValue(const QVariant &read)
{
    static const QString marker = QStringLiteral("@ByteArray(");
    const QString text = read.toString();
    if (text.startsWith(marker))
        return text.mid(marker.size()).toUtf8();
    return read;
}

QString freeNameBeside(const QString &path)
{
    QString aside = path + QStringLiteral(".unreadable");
    for (int number = 2; QFile::exists(aside); ++number)
        aside = path + QStringLiteral(".unreadable-%1").arg(number);
    return aside;
}

} // namespace

std::optional<QString> setAsideIfUnreadable(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray text = file.readAll();
    file.close();
    if (text.isEmpty())
        return std::nullopt;

    // The store ends every line it writes, so a file without a last line end was cut short.
    const bool cutShort = !text.endsWith('\n');
    QSettings read(path, QSettings::IniFormat);
    const bool newer = read.value(QLatin1String(formatKey)).toInt() > format;
    if (!cutShort && !newer && !text.contains('\0') && read.status() == QSettings::NoError)
        return std::nullopt;

    QHash<QString, QVariant> kept;
    const QString cut = cutShort ? cutKey(text) : QString();
    for (const QString &key : read.allKeys())
        kept.insert(key, key == cut ? cutValue(read.value(key)) : read.value(key));

    const QString aside = freeNameBeside(path);
    if (!QFile::rename(path, aside))
        return std::nullopt; // left where it is: better read in part than lost
    QSettings fresh(path, QSettings::IniFormat);
    for (auto entry = kept.cbegin(); entry != kept.cend(); ++entry)
        fresh.setValue(entry.key(), entry.value());
    fresh.setValue(QLatin1String(formatKey), format);
    fresh.sync();
    return aside;
}

} // namespace SettingsFile
