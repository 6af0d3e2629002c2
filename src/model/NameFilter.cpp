#include "model/NameFilter.h"

NameFilter::NameFilter(const QString &text)
    : m_needle(searchKey(text.trimmed()))
{
}

bool NameFilter::matches(const QString &name) const
{
    return m_needle.isEmpty() || searchKey(name).contains(m_needle);
}

QString NameFilter::searchKey(const QString &text)
{
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString key;
    key.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        if (c.category() != QChar::Mark_NonSpacing)
            key.append(c);
    }
    return key.toCaseFolded();
}
