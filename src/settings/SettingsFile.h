#pragma once

#include <QString>

#include <optional>

// The settings file is never written over when Quillo cannot read it whole: a crash may have cut
// it short or left zeros in it, or a newer Quillo may have written it. Such a file is moved aside,
// unchanged, and what could be read of it starts a fresh file, so that the user's connections
// survive whenever their text does.
namespace SettingsFile {

// The layout of the file this build writes; a file of a higher one came from a newer Quillo.
inline constexpr int format = 1;
inline constexpr char formatKey[] = "settingsFormat";

// Checks the file at `path` before the store opens it. When it is unreadable, moves it to a free
// name beside it and returns that name.
std::optional<QString> setAsideIfUnreadable(const QString &path);

} // namespace SettingsFile
