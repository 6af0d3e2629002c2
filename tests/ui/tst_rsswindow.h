#pragma once

#include <QObject>

// Declared apart from the test bodies: moc cannot parse the JSON fixtures' raw strings.
class TestRssWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ruleFormRoundTrip_data();
    void ruleFormRoundTrip();
    void ruleFormEdits();
    void treeShowsNesting();
};
