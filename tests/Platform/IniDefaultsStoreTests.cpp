#include "Platform/linux/IniDefaultsStore.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace mivora;

namespace {

const QString flag = QStringLiteral("showTitle");
const QString width = QStringLiteral("titleWidth");

class IniDefaultsStoreTest : public testing::Test
{
protected:
    QString path() const { return m_folder.filePath(QStringLiteral("mivora/mivora.conf")); }

    void fill(const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(path()).path());
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QByteArray content() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_folder;
};

/// Lets no file of this process grow, as a full disk would.
class FullDisk
{
public:
    FullDisk()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit none{0, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }

    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit m_before{};
};

} // namespace

TEST_F(IniDefaultsStoreTest, brokenFilesAreReadAsFarAsPossibleAndKept)
{
    const std::pair<QByteArray, std::optional<qint64>> rows[] = {
        {"", std::nullopt},
        {QByteArray("\x7f"
                    "ELF\0\0\1\xff\xfe\n\0=\0",
                    14),
         std::nullopt},
        {"{\"titleWidth\": 30}\n", std::nullopt},
        {"[General]\ntitleWidth=30\nbrowserServices=\"zoo", 30},
        {"[General]\nbrowserServices=\"zoom\ntitleWidth=30\n", 30},
        {"[General]\npanelCorner=top\\\ntitleWidth=30\n", 30},
        {"[General]\ntitleWidth=wide\n", std::nullopt},
        {"# mine\n[General]\nwhatever\ntitleWidth=30\n[Other]\ntitleWidth=9\n", 30},
        {QByteArray(2'000'000, 'x') + "\n[General]\ntitleWidth=30", 30},
    };
    for (const auto &[broken, read] : rows) {
        SCOPED_TRACE(broken.left(60).constData());
        fill(broken);
        IniDefaultsStore store(path());
        QSignalSpy failed(&store, &DefaultsStore::writeFailed);
        EXPECT_EQ(store.integer(width), read);

        store.setBoolean(flag, false);
        EXPECT_EQ(failed.count(), 0);
        IniDefaultsStore again(path());
        EXPECT_EQ(again.boolean(flag), false);
        EXPECT_EQ(again.integer(width), read);
        for (const QByteArray &line : broken.split('\n'))
            EXPECT_TRUE(content().contains(line));
    }
}

TEST_F(IniDefaultsStoreTest, everyTypeComesBackInANewStore)
{
    const QString text = QStringLiteral("true; = \\");
    const QStringList list{QStringLiteral("a, \"b\""), QStringLiteral("line\nbreak"), QStringLiteral("会議")};
    const QByteArray data("\0\n{\"\xff", 5);
    {
        IniDefaultsStore store(path());
        store.setBoolean(flag, false);
        store.setInteger(width, std::numeric_limits<qint64>::min());
        store.setString(QStringLiteral("s"), text);
        store.setStringList(QStringLiteral("l"), list);
        store.setData(QStringLiteral("d"), data);
        store.setString(QStringLiteral("gone"), text);
        store.remove(QStringLiteral("gone"));
    }
    const IniDefaultsStore store(path());
    EXPECT_EQ(store.boolean(flag), false);
    EXPECT_EQ(store.integer(width), std::numeric_limits<qint64>::min());
    EXPECT_EQ(store.string(QStringLiteral("s")), text);
    EXPECT_EQ(store.stringList(QStringLiteral("l")), list);
    EXPECT_EQ(store.data(QStringLiteral("d")), data);
    EXPECT_EQ(store.keys().size(), 5);
}

TEST_F(IniDefaultsStoreTest, fullDiskIsReportedOnceAndTheValueCatchesUp)
{
    fill("[General]\ntitleWidth=30\n");
    IniDefaultsStore store(path());
    QSignalSpy failed(&store, &DefaultsStore::writeFailed);
    {
        const FullDisk full;
        store.setInteger(width, 40);
        store.setBoolean(flag, false);
    }
    EXPECT_EQ(content(), "[General]\ntitleWidth=30\n");
    ASSERT_EQ(failed.count(), 1);
    EXPECT_THAT(failed.first().first().toString().toStdString(), testing::HasSubstr(path().toStdString()));
    EXPECT_EQ(store.integer(width), 40);

    store.setString(QStringLiteral("s"), QStringLiteral("x"));
    EXPECT_EQ(content(), "[General]\ntitleWidth=40\ns=x\nshowTitle=false\n");
    const FullDisk full;
    store.remove(width);
    EXPECT_EQ(failed.count(), 2);
}

TEST_F(IniDefaultsStoreTest, whatIsInTheWayIsLeftAlone)
{
    const QString folder = QFileInfo(path()).path();
    const std::pair<const char *, std::function<void()>> cases[] = {
        {"folder in place of the file", [&] { QDir().mkpath(path()); }},
        {"pipe in place of the file",
         [&] {
             QDir().mkpath(folder);
             ASSERT_EQ(mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
         }},
        {"file in place of the folder", [&] { QFile(folder).open(QIODevice::WriteOnly); }},
        {"gigabytes in the file",
         [&] {
             fill("");
             ASSERT_TRUE(QFile::resize(path(), qint64(5) << 30));
         }},
    };
    const auto found = [&] {
        const QFileInfo info(path());
        return std::tuple(info.exists(), info.isFile(), info.size());
    };
    for (const auto &[name, prepare] : cases) {
        SCOPED_TRACE(name);
        prepare();
        const auto before = found();
        IniDefaultsStore store(path());
        QSignalSpy failed(&store, &DefaultsStore::writeFailed);
        EXPECT_EQ(store.keys(), QStringList());
        store.setInteger(width, 30);
        EXPECT_EQ(failed.count(), 1);
        EXPECT_EQ(store.integer(width), 30);
        EXPECT_EQ(found(), before);
        QDir(folder).removeRecursively();
        QFile::remove(folder);
    }
}

TEST_F(IniDefaultsStoreTest, changesOfOthersAreToldOnceAndOwnOnesNever)
{
    IniDefaultsStore mine(path());
    IniDefaultsStore other(path());
    QSignalSpy told(&mine, &DefaultsStore::changedExternally);
    QSignalSpy toldOther(&other, &DefaultsStore::changedExternally);

    // The folder is only made by these writes.
    for (int value = 0; value < 5; ++value)
        other.setInteger(width, value);
    EXPECT_TRUE(told.wait());
    EXPECT_EQ(mine.integer(width), 4);
    QTest::qWait(150);
    EXPECT_EQ(told.count(), 1);
    EXPECT_EQ(toldOther.count(), 0);
}

TEST_F(IniDefaultsStoreTest, editsByHandAreSeenHoweverTheyAreSaved)
{
    fill("[General]\ntitleWidth=1\n");
    IniDefaultsStore store(path());
    QSignalSpy told(&store, &DefaultsStore::changedExternally);
    fill("[General]\ntitleWidth=2\n");
    EXPECT_TRUE(told.wait());
    EXPECT_EQ(store.integer(width), 2);

    const QString draft = path() + QStringLiteral(".new");
    for (int value : {3, 4}) {
        ASSERT_TRUE(QFile::rename(path(), draft));
        fill("[General]\ntitleWidth=" + QByteArray::number(value) + '\n');
        QFile::remove(draft);
        EXPECT_TRUE(told.wait());
        EXPECT_EQ(store.integer(width), value);
    }
    QDir(QFileInfo(path()).path()).removeRecursively();
    EXPECT_TRUE(told.wait());
    EXPECT_EQ(store.integer(width), std::nullopt);
    fill("titleWidth=5\n");
    EXPECT_TRUE(told.wait());
    EXPECT_EQ(store.integer(width), 5);
}

TEST_F(IniDefaultsStoreTest, linkedFileStaysALinkAndIsWatchedWhereItIs)
{
    const QString target = m_folder.filePath(QStringLiteral("dotfiles.conf"));
    ASSERT_TRUE(QFile(target).open(QIODevice::WriteOnly));
    QDir().mkpath(QFileInfo(path()).path());
    ASSERT_TRUE(QFile::link(target, path()));
    IniDefaultsStore store(path());
    store.setInteger(width, 30);
    EXPECT_TRUE(QFileInfo(path()).isSymLink());

    QSignalSpy told(&store, &DefaultsStore::changedExternally);
    IniDefaultsStore(target).setInteger(width, 31);
    EXPECT_TRUE(told.wait());
    EXPECT_EQ(store.integer(width), 31);
}
