#pragma once

#include <QObject>

// Declared apart from the test bodies: moc cannot parse the JSON fixtures' raw strings.
class TestRssRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void items_data();
    void items();
    void malformed_data();
    void malformed();
    void ruleValues_data();
    void ruleValues();
    void ruleEdits_data();
    void ruleEdits();
};
