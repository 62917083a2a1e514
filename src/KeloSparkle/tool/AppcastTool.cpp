// What a maintainer needs to publish an update: a key pair, the signature of a package, the appcast.
// docs/releasing.md has an example of each.

#include "KeloSparkle/tool/AppcastItemWriter.h"
#include "KeloSparkle/tool/SigningKey.h"

#include <CLI/CLI.hpp>
#include <QFile>
#include <QUrl>
#include <cstdio>

namespace {

using namespace kelo;

struct Arguments
{
    std::string keyFile;
    std::string package;
    std::string version;
    std::string url;
    std::string notesFile;
    std::string minimumSystem;
    std::string title = "Mivora";
    std::vector<std::string> itemFiles;
};

QByteArray contentOf(const std::string &path)
{
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("can't read " + path);
    return file.readAll();
}

void print(const QByteArray &text)
{
    std::fwrite(text.constData(), 1, std::size_t(text.size()), stdout);
}

SigningKey keyOf(const Arguments &arguments)
{
    return SigningKey::read(QString::fromStdString(arguments.keyFile));
}

void makeKeys(const Arguments &arguments)
{
    print(SigningKey::make(QString::fromStdString(arguments.keyFile)).publicKey() + '\n');
}

void printPublicKey(const Arguments &arguments)
{
    print(keyOf(arguments).publicKey() + '\n');
}

void sign(const Arguments &arguments)
{
    print(keyOf(arguments).sign(contentOf(arguments.package)) + '\n');
}

void printItem(const Arguments &arguments)
{
    const QUrl url(QString::fromStdString(arguments.url), QUrl::StrictMode);
    if (!url.isValid() || url.scheme() != QLatin1String("https"))
        throw std::runtime_error("the address of the package must be https: " + arguments.url);
    const QByteArray package = contentOf(arguments.package);
    const QByteArray notes = arguments.notesFile.empty() ? QByteArray() : contentOf(arguments.notesFile);
    print(appcastItem({.version = QString::fromStdString(arguments.version),
                       .minimumSystem = QString::fromStdString(arguments.minimumSystem),
                       .notes = QString::fromUtf8(notes).trimmed(),
                       .url = url.toString(QUrl::FullyEncoded),
                       .length = package.size(),
                       .signature = QString::fromLatin1(keyOf(arguments).sign(package)),
                       .published = QDateTime::currentDateTimeUtc()})
              .toUtf8());
}

void printFeed(const Arguments &arguments)
{
    QString items;
    for (const std::string &file : arguments.itemFiles)
        items += QString::fromUtf8(contentOf(file));
    print(appcast(QString::fromStdString(arguments.title), items).toUtf8());
}

CLI::App *addCommand(CLI::App &app, Arguments &arguments, const std::string &name,
                     const std::string &description, void (*run)(const Arguments &))
{
    CLI::App *command = app.add_subcommand(name, description);
    command->callback([&arguments, run] { run(arguments); });
    return command;
}

void declare(CLI::App &app, Arguments &arguments)
{
    app.require_subcommand(1);
    addCommand(app, arguments, "keys",
               "Make a key pair: the private key goes to KEYFILE, the public one is printed", makeKeys)
        ->add_option("KEYFILE", arguments.keyFile)
        ->required();
    addCommand(app, arguments, "public-key", "Print the public key that belongs to KEYFILE", printPublicKey)
        ->add_option("KEYFILE", arguments.keyFile)
        ->required();
    auto *signCommand = addCommand(app, arguments, "sign", "Print the signature of FILE", sign);
    signCommand->add_option("KEYFILE", arguments.keyFile)->required();
    signCommand->add_option("FILE", arguments.package)->required();
    auto *item = addCommand(app, arguments, "item", "Print the appcast item of FILE", printItem);
    item->add_option("KEYFILE", arguments.keyFile)->required();
    item->add_option("FILE", arguments.package)->required();
    item->add_option("--version-of", arguments.version, "The version of the program in FILE")->required();
    item->add_option("--url", arguments.url, "Where FILE is to be downloaded, https")->required();
    item->add_option("--notes", arguments.notesFile, "A plain text file with what is new");
    item->add_option("--minimum-system", arguments.minimumSystem,
                     "The oldest GNU C library that FILE runs with");
    auto *feed = addCommand(app, arguments, "feed", "Print the appcast with these items", printFeed);
    feed->add_option("--title", arguments.title, "The name of the program");
    feed->add_option("ITEM", arguments.itemFiles, "Files that hold items")->required();
}

} // namespace

int main(int argc, char **argv)
{
    CLI::App app("Signs packages and writes the appcast that updates are found by");
    Arguments arguments;
    try {
        declare(app, arguments);
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? 0 : 2;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "mivora-appcast: %s\n", error.what());
        return 1;
    }
    return 0;
}
