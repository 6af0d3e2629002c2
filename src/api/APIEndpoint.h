#pragma once

#include "api/Errors.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace API {

enum class HttpMethod { get, post };

// Method words are case-sensitive on the server: lower case gets 400 everywhere.
QByteArray methodWord(HttpMethod method);

// An HTTP status that an operation of the torrent group turns into a TntManagmentError.
struct StatusRule
{
    int status = 0;
    TntManagmentError::Case kind = TntManagmentError::Case::missingParameter;
    QString description;   // empty: the case's own heading
    QString bodyMarker = {}; // empty: any answer; else only answers whose text contains it
};

// One request of the WebUI API, ready for the request layer: where it goes, how, with what, and
// which error statuses it knows.
struct APIEndpoint
{
    enum class Group { auth, application, sync, tntManagement, transferInfo, log, search, rss };

    Group group = Group::application;
    QString name; // the server's action name, letter for letter
    HttpMethod method = HttpMethod::get;
    QByteArray body;
    QByteArray contentType; // empty when there is no body
    QList<StatusRule> statusRules;
    QString subjectPath; // the folder named by path-related failures

    // Path below "/api/v2/": group prefix and action name.
    QString path() const;
    const StatusRule *ruleFor(int status, QStringView serverText) const;
};

// Builds form bodies; every value is percent-encoded so separators inside values never split a field.
class FormBody
{
public:
    FormBody &add(QStringView key, const QString &value);
    FormBody &add(QStringView key, bool value);
    FormBody &add(QStringView key, qint64 value);
    FormBody &add(QStringView key, int value) { return add(key, qint64{value}); }
    FormBody &add(QStringView key, double value);
    FormBody &add(QStringView key, const char *value) = delete; // would silently become a bool

    const QByteArray &bytes() const { return m_bytes; }

    static QByteArray encodeValue(const QString &value);
    // Shortest text that reads back as the same double, with ".0" on whole numbers.
    static QString formatDouble(double value);

private:
    QByteArray m_bytes;
};

struct MultipartBody
{
    QByteArray boundary;
    QByteArray bytes;
};

} // namespace API
