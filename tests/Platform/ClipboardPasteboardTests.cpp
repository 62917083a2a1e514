#include "Platform/linux/ClipboardPasteboard.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

TEST(ClipboardPasteboard, usesWlCopyOnWaylandAndTheToolkitWhereThatFails)
{
    const QString text = QStringLiteral("https://meet.example/会議?a=1&b='\"$x\n");
    const QByteArray path = qgetenv("PATH");
    const QTemporaryDir folder;
    QFile copied(folder.filePath(QStringLiteral("copied")));
    const auto clipboard = [] { return QGuiApplication::clipboard()->text(); };
    const auto install = [&](const QByteArray &script) {
        QFile file(folder.filePath(QStringLiteral("wl-copy")));
        file.remove();
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("#!/bin/sh\n" + script) > 0);
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    };
    qputenv("PATH", QFile::encodeName(folder.path()) + ":" + path);
    qputenv("WAYLAND_DISPLAY", "wayland-test");
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    install("cd $(dirname $0); cat > part; mv part copied\n");
    mivora::ClipboardPasteboard pasteboard;
    pasteboard.setText(text);
    ASSERT_TRUE(QTest::qWaitFor([&] { return copied.open(QIODevice::ReadOnly); }));
    EXPECT_EQ(QString::fromUtf8(copied.readAll()), text);
    EXPECT_EQ(clipboard(), QStringLiteral("before"));

    install("exit 1\n");
    pasteboard.setText(text);
    EXPECT_TRUE(QTest::qWaitFor([&] { return clipboard() == text; }));
    qputenv("PATH", path);
    qunsetenv("WAYLAND_DISPLAY");
    pasteboard.setText(QStringLiteral("x11"));
    EXPECT_EQ(clipboard(), QStringLiteral("x11"));
}
