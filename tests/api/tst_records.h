#pragma once

#include <QObject>

// Declared apart from the test bodies: moc cannot parse the JSON fixtures' raw strings.
class TestRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keyConversion_data();
    void keyConversion();
    void torrentFields_data();
    void torrentFields();
    void datesAsDateTimes_data();
    void datesAsDateTimes();
    void mainDataCollections();
    void nullCollectionsAreEmpty();
    void repeatedStringsShared();
    void failures_data();
    void failures();
    void malformedBodies_data();
    void malformedBodies();
    void malformedSearchBodies();
    void searchRecords();
    void peers();
    void detailRecords();
    void logRecords_data();
    void logRecords();
    void peerLogRecords();
    void decodesOnWorkers();
};
