#include "Platform/linux/JsonDefaultsStore.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <functional>
#include <gmock/gmock.h>
#include <random>
#include <sys/resource.h>
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
    QString path() const { return m_folder.filePath(QStringLiteral("mivora/mivora.json")); }

    QString folder() const { return QFileInfo(path()).path(); }

    void fill(const QByteArray &content) const
    {
        QDir().mkpath(folder());
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll().simplified() : QByteArray();
    }

    int stored() const { return JsonDefaultsStore(path()).value(width).toInt(-1); }

    QTemporaryDir m_folder;
};

/// Lets no file of this process grow large, as a full disk would.
class FullDisk
{
public:
    FullDisk()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        // The lock file still fits.
        const rlimit some{500, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &some);
    }

    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit m_before{};
};

/// Runs `body` in a process of its own; it ends with what `body` returns.
pid_t inChild(const std::function<int()> &body)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(body());
    return child;
}

int statusOf(pid_t child)
{
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

} // namespace

TEST_F(SettingsFile, keepsEveryTypeAndWhatNobodyKnows)
{
    const QJsonValue number(std::numeric_limits<qint64>::min());
    const QJsonArray list{QStringLiteral("a, \"b\""), QStringLiteral("line\nbreak"), QStringLiteral("会議")};
    fill(R"({"later": {"version": [1, 2]}, "gone": 1})");
    {
        JsonDefaultsStore store(path());
        store.setValue(flag, false);
        store.setValue(width, number);
        store.setValue(QStringLiteral("list"), list);
        store.setValue(QStringLiteral("gone"), QJsonValue::Undefined);
    }
    const JsonDefaultsStore store(path());
    EXPECT_EQ(store.value(flag), QJsonValue(false));
    EXPECT_EQ(store.value(width), number);
    EXPECT_EQ(store.value(QStringLiteral("list")), list);
    EXPECT_EQ(store.value(QStringLiteral("later"))[u"version"][1], 2);
    EXPECT_EQ(store.values().size(), 4);
}

TEST_F(SettingsFile, whatIsNoObjectIsSetAsideAndNeverOverwritten)
{
    const std::pair<const char *, std::function<void()>> cases[] = {
        {"half an object", [&] { fill(R"({"showTitle": fal)"); }},
        {"a list", [&] { fill("[1]"); }},
        {"INI", [&] { fill("[General]\nshowTitle=false\n"); }},
        {"a folder", [&] { QDir().mkpath(path()); }},
        {"a pipe",
         [&] {
             QDir().mkpath(folder());
             ASSERT_EQ(mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
         }},
        {"gigabytes",
         [&] {
             fill("");
             ASSERT_TRUE(QFile::resize(path(), qint64(5) << 30));
         }},
    };
    const auto asides = [&] {
        return QDir(folder()).entryList({QStringLiteral("*.unreadable*")}, QDir::AllEntries | QDir::System);
    };
    for (const auto &[name, prepare] : cases) {
        SCOPED_TRACE(name);
        const auto before = asides().size();
        QFile::remove(path());
        prepare();
        const auto size = QFileInfo(path()).size();
        JsonDefaultsStore store(path());
        EXPECT_EQ(store.values(), QJsonObject());
        EXPECT_EQ(asides().size(), before) << "reading changes nothing";
        store.setValue(width, 30);
        EXPECT_EQ(stored(), 30);
        ASSERT_EQ(asides().size(), before + 1);
        const QString last =
            QStringLiteral(".unreadable") + (before ? QStringLiteral("-%1").arg(before + 1) : QString());
        EXPECT_EQ(QFileInfo(path() + last).size(), size);
    }
}

TEST_F(SettingsFile, aBrokenEditChangesNothingInARunningProgramAndLosesNothing)
{
    fill(R"({"titleWidth": 30, "showTitle": true})");
    JsonDefaultsStore store(path());
    fill(R"({"titleWidth": 31, "showTitle")");
    store.setValue(flag, false);
    EXPECT_EQ(contentOf(path()), R"({ "showTitle": false, "titleWidth": 30 })");
    EXPECT_EQ(contentOf(path() + QStringLiteral(".unreadable")), R"({"titleWidth": 31, "showTitle")");
    // An empty file is no edit.
    fill("\n");
    store.setValue(flag, true);
    EXPECT_EQ(contentOf(path()), R"({ "showTitle": true })");
}

TEST_F(SettingsFile, fullDiskIsReportedOnceAndTheValueCatchesUp)
{
    const QString text = QStringLiteral("long");
    const QByteArray whole = "{ \"long\": \"" + QByteArray(1000, 'x') + "\" }";
    fill(whole);
    JsonDefaultsStore store(path());
    QSignalSpy failed(&store, &DefaultsStore::writeFailed);
    {
        const FullDisk full;
        store.setValue(width, 40);
        store.setValue(flag, false);
    }
    EXPECT_EQ(contentOf(path()), whole);
    ASSERT_EQ(failed.count(), 1);
    EXPECT_THAT(failed.first().first().toString().toStdString(), testing::HasSubstr(path().toStdString()));
    EXPECT_EQ(store.value(width), 40);
    EXPECT_FALSE(store.isSaved());
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files), QStringList(QStringLiteral("mivora.json")));

    const FullDisk full;
    store.setValue(text, QJsonValue::Undefined);
    EXPECT_EQ(contentOf(path()), R"({ "showTitle": false, "titleWidth": 40 })");
    EXPECT_TRUE(store.isSaved());
    store.setValue(text, QString(1000, QLatin1Char('x')));
    EXPECT_EQ(failed.count(), 2);
}

TEST_F(SettingsFile, changesOfOthersAreToldHoweverTheyAreSavedAndOwnOnesNever)
{
    JsonDefaultsStore mine(path());
    JsonDefaultsStore other(path());
    QSignalSpy told(&mine, &DefaultsStore::changedExternally);
    QSignalSpy toldOther(&other, &DefaultsStore::changedExternally);
    // The folder is only made by this write.
    for (int value = 1; value < 4; ++value)
        other.setValue(width, value);
    EXPECT_TRUE(told.wait());
    EXPECT_EQ(mine.value(width), 3);

    const QString draft = path() + QStringLiteral(".new");
    const std::function<void()> edits[] = {
        [&] { fill(R"({"titleWidth": 4})"); },
        [&] {
            ASSERT_TRUE(QFile::rename(path(), draft));
            fill(R"({"titleWidth": 5})");
        },
        [&] { QDir(folder()).removeRecursively(); },
        [&] { fill(R"({"titleWidth": 7})"); },
    };
    for (int width = 4; const auto &edit : edits) {
        edit();
        EXPECT_TRUE(told.wait()) << width;
        EXPECT_EQ(mine.value(QStringLiteral("titleWidth")).toInt(6), width++);
    }
    EXPECT_EQ(told.count(), 5);
    EXPECT_EQ(toldOther.count(), 4);
}

TEST_F(SettingsFile, aLinkStaysALinkAndIsWatchedWhereItLeads)
{
    const QString target = m_folder.filePath(QStringLiteral("dotfiles.json"));
    ASSERT_TRUE(QFile(target).open(QIODevice::WriteOnly) &&
                QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    QDir().mkpath(folder());
    ASSERT_TRUE(QFile::link(target, path()));
    JsonDefaultsStore store(path());
    store.setValue(width, 30);
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_TRUE(QFileInfo(target).permission(QFile::ReadGroup));

    QSignalSpy told(&store, &DefaultsStore::changedExternally);
    JsonDefaultsStore(target).setValue(width, 31);
    EXPECT_TRUE(told.wait());
    EXPECT_EQ(store.value(width), 31);
}

TEST_F(SettingsFile, killedProcessLosesNothingThatASetterReturnedFor)
{
    std::mt19937 random(7);
    int last = 0;
    for (int round = 0; round < 6; ++round) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t child = inChild([&] {
            JsonDefaultsStore store(path());
            for (int count = last + 1;; ++count) {
                store.setValue(width, count);
                if (write(ends[1], &count, sizeof count) != sizeof count)
                    return 1;
            }
        });
        close(ends[1]);
        usleep(10'000 + random() % 40'000);
        kill(child, SIGKILL);
        EXPECT_TRUE(WIFSIGNALED(statusOf(child)));
        for (int count = 0; read(ends[0], &count, sizeof count) == sizeof count;)
            last = count;
        close(ends[0]);
        EXPECT_THAT(stored(), testing::AnyOf(last, last + 1, -1));
        last = std::max(last, stored());
    }
    EXPECT_GT(last, 0);
    // A lock of a dead process holds up nobody.
    JsonDefaultsStore(path()).setValue(width, 0);
    EXPECT_EQ(stored(), 0);
}

TEST_F(SettingsFile, processesThatWriteDifferentKeysAtOnceLoseNone)
{
    constexpr int keysOfEach = 40;
    std::vector<pid_t> children;
    for (const char prefix : {'a', 'b', 'c'})
        children.push_back(inChild([&] {
            JsonDefaultsStore store(path());
            for (int key = 0; key < keysOfEach; ++key)
                store.setValue(QLatin1Char(prefix) + QString::number(key), key);
            return store.isSaved() ? 0 : 1;
        }));
    for (const pid_t child : children)
        EXPECT_EQ(statusOf(child), 0);
    EXPECT_EQ(JsonDefaultsStore(path()).values().size(), qsizetype(children.size()) * keysOfEach);
}

TEST_F(SettingsFile, aFolderThatMayNotBeWrittenIsLeftAlone)
{
    fill(R"({"titleWidth": 1})");
    ASSERT_EQ(chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
    ASSERT_EQ(chmod(QFile::encodeName(folder()).constData(), 0555), 0);
    const pid_t child = inChild([&] {
        // Root may write everywhere.
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            return 2;
        JsonDefaultsStore store(path());
        QSignalSpy failed(&store, &DefaultsStore::writeFailed);
        store.setValue(width, 2);
        store.setValue(width, 3);
        return failed.count() == 1 && store.value(width) == 3 ? 0 : 1;
    });
    EXPECT_EQ(statusOf(child), 0);
    EXPECT_EQ(stored(), 1);
}
