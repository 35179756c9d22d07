#pragma once

#include <HttpServer.h>

#include <QByteArray>
#include <QJsonDocument>
#include <QString>

/// Header fields that every answer of a page carries: nothing from elsewhere is loaded, no script
/// runs but the program's own files, and nothing is kept by the browser.
ResponseHeader pageHeader(int status, const QString &contentType);

/// These answer the request being delivered.
void answerWith(HttpServer &server, const QString &contentType, const QByteArray &body);
void answerWithJson(HttpServer &server, const QJsonDocument &json);
/// 204, for what was done and has nothing to tell.
void answerDone(HttpServer &server);
/// A status with a line of text for people.
void answerWithText(HttpServer &server, int status, const QString &text);
