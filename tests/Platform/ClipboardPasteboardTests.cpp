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
    const QTemporaryDir folder;
    const QString copied = folder.filePath(QStringLiteral("copied"));
    const auto clipboard = [] { return QGuiApplication::clipboard()->text(); };
    // Works once.
    QFile wlCopy(folder.filePath(QStringLiteral("wl-copy")));
    ASSERT_TRUE(wlCopy.open(QFile::WriteOnly));
    wlCopy.write("#!/bin/sh\ncd $(dirname $0)\n[ ! -e copied ] && cat > part && mv part copied\n");
    wlCopy.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    wlCopy.close();
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QByteArray(QFile::encodeName(folder.path()) + ":" + path));
    qputenv("WAYLAND_DISPLAY", "wayland-test");
    mivora::ClipboardPasteboard pasteboard;
    pasteboard.setText(text);
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(copied); }));
    EXPECT_EQ(QFileInfo(copied).size(), text.toUtf8().size());
    EXPECT_NE(clipboard(), text);
    pasteboard.setText(text);
    EXPECT_TRUE(QTest::qWaitFor([&] { return clipboard() == text; }));
    qputenv("PATH", path);
    qunsetenv("WAYLAND_DISPLAY");
    pasteboard.setText(QStringLiteral("x11"));
    EXPECT_EQ(clipboard(), QStringLiteral("x11"));
}
