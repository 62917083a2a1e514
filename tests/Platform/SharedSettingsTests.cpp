#include "Platform/linux/IniDefaultsStore.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <csignal>
#include <functional>
#include <gmock/gmock.h>
#include <random>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace mivora;

namespace {

const QString number = QStringLiteral("number");

/// Runs \a body in a process of its own.
pid_t inChild(const std::function<void()> &body)
{
    const pid_t child = fork();
    if (child != 0)
        return child;
    body();
    _exit(0);
}

int statusOf(pid_t child)
{
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

/// Counts on in the store for ever, and says on \a pipe what every setter that returned has set.
void countForEver(const QString &path, int pipe)
{
    IniDefaultsStore store(path);
    for (qint64 count = store.integer(number).value_or(0) + 1;; ++count) {
        store.setInteger(number, count);
        if (write(pipe, &count, sizeof count) != sizeof count)
            return;
    }
}

qint64 lastCountOn(int pipe)
{
    qint64 last = 0;
    for (qint64 count = 0; read(pipe, &count, sizeof count) == sizeof count;)
        last = count;
    return last;
}

class SharedSettings : public testing::Test
{
protected:
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("mivora.conf"));
};

} // namespace

TEST_F(SharedSettings, killedProcessLosesNothingThatASetterReturnedFor)
{
    std::mt19937 random(7);
    qint64 last = 0;
    for (int round = 0; round < 6; ++round) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t child = inChild([&] { countForEver(path, ends[1]); });
        close(ends[1]);
        usleep(10'000 + random() % 40'000);
        kill(child, SIGKILL);
        EXPECT_TRUE(WIFSIGNALED(statusOf(child)));
        last = std::max(last, lastCountOn(ends[0]));
        close(ends[0]);
        const qint64 stored = IniDefaultsStore(path).integer(number).value_or(0);
        EXPECT_THAT(stored, testing::AnyOf(last, last + 1));
        last = stored;
    }
    EXPECT_GT(last, 0);
    // A lock of a dead process holds up nobody.
    IniDefaultsStore store(path);
    store.setInteger(number, -1);
    EXPECT_EQ(IniDefaultsStore(path).integer(number), -1);
}

TEST_F(SharedSettings, processesThatWriteDifferentKeysAtOnceLoseNone)
{
    constexpr int keysOfEach = 40;
    const auto writeKeys = [&](const QString &prefix) {
        IniDefaultsStore store(path);
        for (int key = 0; key < keysOfEach; ++key)
            store.setInteger(prefix + QString::number(key), key);
    };
    std::vector<pid_t> children;
    for (const char *prefix : {"a", "b", "c"})
        children.push_back(inChild([&] { writeKeys(QString::fromLatin1(prefix)); }));
    for (const pid_t child : children)
        EXPECT_EQ(statusOf(child), 0);
    EXPECT_EQ(IniDefaultsStore(path).keys().size(), qsizetype(children.size()) * keysOfEach);
}

TEST_F(SharedSettings, fileThatMayNotBeReadOrWrittenIsLeftAlone)
{
    IniDefaultsStore(path).setInteger(number, 1);
    const auto writeAsNobody = [&] {
        // Root may read and write everything.
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            _exit(2);
        IniDefaultsStore store(path);
        int failures = 0;
        QObject::connect(&store, &DefaultsStore::writeFailed, [&] { ++failures; });
        store.setInteger(number, 2);
        store.setInteger(number, 3);
        _exit(failures == 1 && store.integer(number) == 3 ? 0 : 1);
    };
    for (const auto &[file, directory] : {std::pair{0000, 0755}, std::pair{0444, 0555}}) {
        ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode_t(file)), 0);
        ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), mode_t(directory)), 0);
        EXPECT_EQ(statusOf(inChild(writeAsNobody)), 0) << std::oct << file;
    }
    ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0755), 0);
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0644), 0);
    EXPECT_EQ(IniDefaultsStore(path).integer(number), 1);
}
