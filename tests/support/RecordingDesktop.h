#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace support {

/// The user's folders of desktop files, in which everything is opened by a program that writes its arguments
/// down, a line each. GIO reads where they are once, so make it before GIO is used, and one in a process.
class RecordingDesktop
{
public:
    RecordingDesktop()
    {
        QDir().mkpath(path("applications"));
        script("recorder", "printf '%s\\n' \"$@\" >> '" + path("opened").toUtf8() + "'\n");
        write("mimeapps.list", "[Default Applications]\n");
        for (const char *folder : {"XDG_DATA_HOME", "XDG_CONFIG_HOME"})
            qputenv(folder, path("").toUtf8());
        // The programs of the machine stay out of it.
        for (const char *folders : {"XDG_DATA_DIRS", "XDG_CONFIG_DIRS"})
            qputenv(folders, path("none").toUtf8());
        qputenv("PATH", path("").toUtf8() + ":" + qgetenv("PATH"));
    }

    QString path(const QByteArray &name) const { return m_root.filePath(QString::fromUtf8(name)); }

    void write(const QByteArray &name, const QByteArray &content,
               QIODevice::OpenMode mode = QIODevice::WriteOnly) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(mode));
        file.write(content);
    }

    void script(const QByteArray &name, const QByteArray &body) const
    {
        write(name, "#!/bin/sh\n" + body);
        QFile::setPermissions(path(name), QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
    }

    /// Has \a exec open what is of \a type.
    void handler(const QByteArray &type, const QByteArray &exec) const
    {
        const QByteArray entry = QByteArray(type).replace('/', '-') + ".desktop";
        write("applications/" + entry,
              "[Desktop Entry]\nType=Application\nName=Test\nExec=" + exec + "\nMimeType=" + type + ";\n");
        write("mimeapps.list", type + '=' + entry + '\n', QIODevice::Append);
    }

    QStringList opened() const
    {
        QFile file(path("opened"));
        return file.open(QIODevice::ReadOnly)
                   ? QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)
                   : QStringList();
    }

private:
    QTemporaryDir m_root;
};

} // namespace support
