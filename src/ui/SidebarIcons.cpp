#include "ui/SidebarIcons.h"

#include "ui/ThemedIcon.h"

#include <algorithm>
#include <array>

namespace {

struct Symbol
{
    QStringView symbol;
    QStringView themeName; // freedesktop naming; empty where no theme has the picture
    QStringView bundled;   // under :/bundled/icons/sidebar/
};

constexpr std::array symbols{
    Symbol{u"square.grid.2x2", u"view-grid", u"grid"},
    Symbol{u"arrowshape.down", u"go-down", u"down"},
    Symbol{u"arrowshape.up", u"go-up", u"up"},
    Symbol{u"stop", u"media-playback-stop", u"stop"},
    Symbol{u"checkmark.diamond", u"emblem-ok", u"completed"},
    Symbol{u"circlebadge.2", u"view-list-ordered", u"queued"},
    Symbol{u"arrow.down.left.arrow.up.right", u"network-idle", u"stalled"},
    Symbol{u"arrow.triangle.2.circlepath.circle", u"view-refresh", u"checking"},
    Symbol{u"folder", u"folder", u"folder"},
    Symbol{u"exclamationmark.triangle", u"dialog-warning", u"warning"},
    Symbol{u"distribute.vertical", u"view-list", u"category"},
    Symbol{u"tag", u"tag", u"tag"},
    Symbol{u"server.rack", u"network-server", u"tracker"},
    Symbol{u"plus", u"list-add", u"add"},
    Symbol{u"pencil", u"document-edit", u"edit"},
    Symbol{u"minus", u"list-remove", u"remove"},
    // The state of the alternative speed limits is told by the fill, which themes do not pair.
    Symbol{u"flame", {}, u"flame"},
    Symbol{u"flame.fill", {}, u"flame-fill"},
};

} // namespace

namespace SidebarIcons {

QString symbolName(const SidebarItem &item)
{
    using State = TntModel::State;
    switch (item.type) {
    case SidebarItem::ItemType::category: return QStringLiteral("distribute.vertical");
    case SidebarItem::ItemType::tag: return QStringLiteral("tag");
    case SidebarItem::ItemType::tracker: return QStringLiteral("server.rack");
    case SidebarItem::ItemType::state: break;
    }
    switch (item.state.value_or(State::all)) {
    case State::downloading: return QStringLiteral("arrowshape.down");
    case State::uploading: return QStringLiteral("arrowshape.up");
    case State::stopped: return QStringLiteral("stop");
    case State::complited: return QStringLiteral("checkmark.diamond");
    case State::queued: return QStringLiteral("circlebadge.2");
    case State::stalled: return QStringLiteral("arrow.down.left.arrow.up.right");
    case State::checking: return QStringLiteral("arrow.triangle.2.circlepath.circle");
    // The folder with an arrow exists only in the newest symbol sets; the plain folder everywhere.
    case State::moving: return QStringLiteral("folder");
    case State::error: return QStringLiteral("exclamationmark.triangle");
    default: return QStringLiteral("square.grid.2x2");
    }
}

QIcon forSymbol(QStringView symbol)
{
    const auto found = std::find_if(symbols.cbegin(), symbols.cend(), [symbol](const Symbol &s) { return s.symbol == symbol; });
    if (found == symbols.cend())
        return {};
    return themedIcon(found->themeName, QStringLiteral("sidebar/%1").arg(found->bundled));
}

} // namespace SidebarIcons
