#include "api/AddingChoices.h"

namespace API {

QString wireText(TntContentLayout layout)
{
    switch (layout) {
    case TntContentLayout::original: return QStringLiteral("Original");
    case TntContentLayout::subfolder: return QStringLiteral("Subfolder");
    case TntContentLayout::noSubfolder: return QStringLiteral("NoSubfolder");
    }
    Q_UNREACHABLE();
}

QString wireText(TntStopCondition condition)
{
    switch (condition) {
    case TntStopCondition::none: return QStringLiteral("None");
    case TntStopCondition::metaReceived: return QStringLiteral("MetadataReceived");
    case TntStopCondition::filesChecked: return QStringLiteral("FilesChecked");
    }
    Q_UNREACHABLE();
}

} // namespace API
