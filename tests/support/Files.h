#pragma once

#include <QFile>
#include <QString>
#include <QtGlobal>

namespace QuilloTest {

// Writes `content` to `<folder>/<name>` and returns the path; a test cannot go on without it.
inline QString writeFile(const QString &folder, const QString &name, const QByteArray &content)
{
    QFile file(folder + u'/' + name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

} // namespace QuilloTest
