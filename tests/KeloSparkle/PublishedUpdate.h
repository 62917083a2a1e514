#pragma once

#include "HttpsServer.h"
#include "Publisher.h"

#include <QDir>
#include <QTest>
#include <gtest/gtest.h>

namespace kelo {

/// A server that is trusted, and version 1.1 on it.
class PublishedUpdate : public testing::Test
{
protected:
    static void SetUpTestSuite() { s_publisher = std::make_unique<Publisher>(); }

    static void TearDownTestSuite() { s_publisher.reset(); }

    void SetUp() override
    {
        s_publisher->trust();
        publish(QStringLiteral("1.1"));
    }

    void publish(const QString &version)
    {
        const QUrl url = server.address(packagePath);
        server.answers[feedPath] = {.body = s_publisher->feed(version, package, url, "<b>Faster</b>")};
        server.answers[packagePath] = {.body = package};
    }

    QString downloads() const { return folder.filePath(QStringLiteral("packages")); }

    QStringList kept() const { return QDir(downloads()).entryList(QDir::Files | QDir::Hidden); }

    static inline std::unique_ptr<Publisher> s_publisher;
    static inline const QString feedPath = QStringLiteral("/appcast.xml");
    static inline const QString packagePath = QStringLiteral("/mivora_1.1_amd64.pkg");

    HttpsServer server{s_publisher->server()};
    QTemporaryDir folder;
    QByteArray package = QByteArray(300'000, 'p') + "end";
};

} // namespace kelo
