#include "Platform/linux/JsonDefaultsStore.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace mivora;

namespace {

const QString flag = QStringLiteral("showTitle");
const QString width = QStringLiteral("titleWidth");

class SettingsFile : public testing::Test
{
protected:
    void fill(const QByteArray &content) const
    {
        QDir().mkpath(folder);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    std::string content() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll().simplified().toStdString() : "";
    }

    QTemporaryDir root;
    const QString folder = root.filePath(QStringLiteral("mivora"));
    const QString path = folder + QStringLiteral("/mivora.json");
};

} // namespace

TEST_F(SettingsFile, keepsEveryTypeAndWhatNobodyKnows)
{
    fill(R"({"later": {"version": [1, 2]}, "gone": 1})");
    JsonDefaultsStore written(path);
    written.setValue(flag, false);
    written.setValue(width, std::numeric_limits<qint64>::min());
    written.setValue(QStringLiteral("list"),
                     QJsonArray{QStringLiteral("a, \"b\""), QStringLiteral("\n会議")});
    written.setValue(QStringLiteral("gone"), QJsonValue::Undefined);
    const JsonDefaultsStore read(path);
    EXPECT_EQ(read.values(), written.values());
    EXPECT_EQ(JsonDefaultsStore(QString()).values(), QJsonObject()) << "no file at all";
    EXPECT_EQ(content(), R"({ "later": { "version": [ 1, 2 ] }, "list": [ "a, \"b\"", "\n会議" ], )"
                         R"("showTitle": false, "titleWidth": -9223372036854775808 })");
}

TEST_F(SettingsFile, whatIsNoObjectIsSetAsideAndNeverOverwritten)
{
    const std::function<void()> cases[] = {
        [&] { fill(R"({"showTitle": fal)"); }, [&] { fill("[1]"); }, [&] { QDir().mkpath(path); },
        [&] { ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0); },
        [&] {
            fill("");
            ASSERT_TRUE(QFile::resize(path, qint64(5) << 30));
        }};
    JsonDefaultsStore running(path);
    running.setValue(flag, true);
    for (int number = 1; const auto &prepare : cases) {
        QFile::remove(path);
        prepare();
        const auto size = QFileInfo(path).size();
        const QString aside = path + QStringLiteral(".unreadable") +
                              (number > 1 ? QStringLiteral("-%1").arg(number) : QString());
        EXPECT_EQ(JsonDefaultsStore(path).values(), QJsonObject());
        EXPECT_FALSE(QFileInfo::exists(aside)) << "reading changes nothing";
        // A running program goes on with what it knows.
        running.setValue(width, number++);
        EXPECT_EQ(JsonDefaultsStore(path).values(), running.values());
        EXPECT_EQ(running.value(flag), true);
        EXPECT_TRUE(QFileInfo::exists(aside));
        EXPECT_EQ(QFileInfo(aside).size(), size);
    }
    fill("\n");
    running.setValue(width, 0);
    EXPECT_EQ(content(), R"({ "titleWidth": 0 })") << "an empty file is no broken one";
}

TEST_F(SettingsFile, failureIsToldOnceAndTheValuesCatchUp)
{
    JsonDefaultsStore store(path);
    QSignalSpy failed(&store, &DefaultsStore::writeFailed);
    for (const int failures : {1, 2}) {
        QDir(folder).removeRecursively();
        ASSERT_TRUE(QFile(folder).open(QFile::WriteOnly)) << "a file where the folder should be";
        store.setValue(width, 40);
        store.setValue(flag, failures == 1);
        ASSERT_EQ(failed.count(), failures);
        EXPECT_THAT(failed.last().first().toString().toStdString(),
                    testing::HasSubstr(root.path().toStdString()));
        EXPECT_EQ(store.value(width), 40);
        EXPECT_FALSE(store.isSaved());
        QFile::remove(folder);
        store.setValue(QStringLiteral("later"), failures);
        EXPECT_EQ(JsonDefaultsStore(path).values(), store.values());
        EXPECT_TRUE(store.isSaved());
    }
    EXPECT_EQ(content(), R"({ "later": 2, "showTitle": false, "titleWidth": 40 })");
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList(QStringLiteral("mivora.json")));
}

TEST_F(SettingsFile, changesOfOthersAreToldHoweverTheyAreSavedAndOwnOnesNever)
{
    const QString target = root.filePath(QStringLiteral("dotfiles.json"));
    ASSERT_TRUE(QFile(target).open(QFile::WriteOnly) && QDir().mkpath(folder) && QFile::link(target, path));
    JsonDefaultsStore mine(path);
    mine.setValue(flag, true);
    JsonDefaultsStore other(target);
    QSignalSpy told(&mine, &DefaultsStore::changedExternally);
    QSignalSpy toldOther(&other, &DefaultsStore::changedExternally);
    const std::function<void()> edits[] = {
        [&] { other.setValue(width, 1); }, // where the link leads
        [&] { fill(R"({"titleWidth": 2})"); },
        [&] {
            ASSERT_TRUE(QFile::rename(path, path + QStringLiteral(".new")));
            fill(R"({"titleWidth": 3})");
        },
        [&] { QDir(folder).removeRecursively(); },
        [&] { fill(R"({"titleWidth": 5})"); },
    };
    for (int value = 1; const auto &edit : edits) {
        edit();
        EXPECT_TRUE(told.wait()) << value;
        EXPECT_EQ(QFileInfo(path).isSymLink(), value < 3) << value;
        EXPECT_EQ(mine.value(width).toInt(4), value++);
    }
    EXPECT_EQ(told.count(), 5);
    EXPECT_EQ(toldOther.count(), 1) << "where the link leads no more";
}

TEST_F(SettingsFile, processesThatWriteAtOnceLoseNothing)
{
    constexpr int keys = 40;
    const QString writers = QStringLiteral("abcd");
    for (const QChar writer : writers) {
        if (fork() != 0)
            continue;
        JsonDefaultsStore store(path);
        for (int key = 0; key < keys; ++key)
            store.setValue(writer + QString::number(key), key);
        _exit(store.isSaved() ? 0 : 1);
    }
    for (int status = -1; wait(&status) > 0;)
        EXPECT_EQ(status, 0);
    EXPECT_EQ(JsonDefaultsStore(path).values().size(), writers.size() * keys);
}
