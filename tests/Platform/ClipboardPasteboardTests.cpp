#include "Platform/linux/ClipboardPasteboard.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

using namespace mivora;

namespace {

const QString text = QStringLiteral("https://meet.example/会議?a=1&b='\"$x\n");

/// A Wayland session whose wl-copy is the given shell script.
class WaylandSession : public testing::Test
{
protected:
    void install(const QByteArray &script)
    {
        QFile file(m_folder.filePath(QStringLiteral("wl-copy")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }

    void SetUp() override
    {
        qputenv("PATH", QFile::encodeName(m_folder.path()) + ":" + m_path);
        qputenv("WAYLAND_DISPLAY", "wayland-test");
        QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    }

    void TearDown() override
    {
        qputenv("PATH", m_path);
        qunsetenv("WAYLAND_DISPLAY");
    }

    QString clipboard() const { return QGuiApplication::clipboard()->text(); }

    QTemporaryDir m_folder;
    const QByteArray m_path = qgetenv("PATH");
};

} // namespace

TEST_F(WaylandSession, textGoesThroughWlCopyByteForByte)
{
    const QString copied = m_folder.filePath(QStringLiteral("copied"));
    install("cd $(dirname $0); cat > part; mv part copied\n");
    ClipboardPasteboard pasteboard;
    pasteboard.setText(text);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(copied); }));
    QFile file(copied);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(file.readAll()), text);
    EXPECT_EQ(clipboard(), QStringLiteral("before"));
}

TEST_F(WaylandSession, toolkitStepsInWhereWlCopyFailsOrIsMissingAndOnX11)
{
    install("exit 1\n");
    ClipboardPasteboard pasteboard;
    pasteboard.setText(text);
    EXPECT_TRUE(QTest::qWaitFor([&] { return clipboard() == text; }));
    qputenv("PATH", "/nonexistent");
    pasteboard.setText(QStringLiteral("missing"));
    EXPECT_EQ(clipboard(), QStringLiteral("missing"));
    TearDown();
    pasteboard.setText(QStringLiteral("x11"));
    EXPECT_EQ(clipboard(), QStringLiteral("x11"));
}
