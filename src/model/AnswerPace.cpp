#include "model/AnswerPace.h"

AnswerPace::AnswerPace(QObject *parent)
    : QObject(parent)
{}

void AnswerPace::record(Duration answer)
{
    answer = std::max(answer, Duration(0));
    m_smoothed = !m_last || answer >= m_smoothed ? answer : m_smoothed - (m_smoothed - answer) / 4;
    m_last = answer;
    Q_EMIT changed();
}

void AnswerPace::reset()
{
    m_last.reset();
    m_smoothed = Duration(0);
    Q_EMIT changed();
}
