#include "App/commands/DefaultsCommand.h"

#include "CommandLine/CommandLineTexts.h"
#include "CommandLine/Output.h"
#include "Platform/DefaultsStore.h"
#include "Preferences/Settings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

namespace mivora {

namespace {

QString qString(const std::string &text)
{
    return QString::fromStdString(text);
}

const Setting *settingNamed(const std::string &key)
{
    const auto &settings = allSettings();
    const auto found =
        std::ranges::find_if(settings, [&](const Setting &s) { return s.key == qString(key); });
    return found == settings.end() ? nullptr : &*found;
}

QString allKeys()
{
    QStringList keys;
    for (const Setting &setting : allSettings())
        keys.append(setting.key);
    return keys.join(QLatin1String(", "));
}

void complainOfKey(const std::string &key)
{
    complain(CommandLineTexts::tr("KEY: expected one of %1, got \"%2\"").arg(allKeys(), qString(key)));
}

template<typename T> QJsonValue valueOr(const std::optional<T> &stored, const QJsonValue &fallback)
{
    return stored ? QJsonValue(*stored) : fallback;
}

/// The value as it is stored, or as it reads without one; undefined when there is neither.
QJsonValue currentValue(const Setting &setting, const DefaultsStore &store)
{
    switch (setting.type) {
    case SettingType::boolean:
        return valueOr(store.boolean(setting.key), setting.registeredDefault);
    case SettingType::integer:
        return valueOr(store.integer(setting.key), setting.registeredDefault);
    case SettingType::string:
        return valueOr(store.string(setting.key), setting.registeredDefault);
    case SettingType::stringList:
        if (const auto list = store.stringList(setting.key))
            return QJsonArray::fromStringList(*list);
        return setting.registeredDefault;
    case SettingType::data:
        if (const auto data = store.data(setting.key))
            return QString::fromUtf8(*data);
        return setting.registeredDefault;
    }
    return setting.registeredDefault;
}

/// Texts stand for themselves; everything else is JSON.
QByteArray printed(const QJsonValue &value)
{
    if (value.isString())
        return value.toString().toUtf8();
    if (value.isArray())
        return QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact);
    return value.toVariant().toString().toUtf8();
}

int list(const DefaultsStore &store)
{
    for (const Setting &setting : allSettings()) {
        const QJsonValue value = currentValue(setting, store);
        if (!value.isUndefined())
            print(QByteArray(setting.key.data(), setting.key.size()) + ' ' + printed(value) + '\n');
    }
    return exitDone;
}

int read(const std::string &key, const DefaultsStore &store)
{
    const Setting *setting = settingNamed(key);
    if (!setting) {
        complainOfKey(key);
        return exitBadArguments;
    }
    const QJsonValue value = currentValue(*setting, store);
    if (value.isUndefined()) {
        complain(CommandLineTexts::tr("%1 is not set").arg(qString(key)));
        return exitCouldNot;
    }
    print(printed(value) + '\n');
    return exitDone;
}

/// Stores \a text under the setting's key; false when it is no value of the setting's type.
bool store(const Setting &setting, const QString &text, DefaultsStore &store)
{
    bool ok = true;
    switch (setting.type) {
    case SettingType::boolean:
        ok = text == QLatin1String("true") || text == QLatin1String("false");
        if (ok)
            store.setBoolean(setting.key, text == QLatin1String("true"));
        return ok;
    case SettingType::integer: {
        const qint64 number = text.toLongLong(&ok);
        if (ok)
            store.setInteger(setting.key, number);
        return ok;
    }
    case SettingType::string:
        store.setString(setting.key, text);
        return true;
    case SettingType::stringList: {
        const QJsonDocument json = QJsonDocument::fromJson(text.toUtf8());
        const QJsonArray values = json.array();
        ok = json.isArray() && std::ranges::all_of(values, [](const QJsonValue &v) { return v.isString(); });
        if (ok)
            store.setStringList(setting.key, json.toVariant().toStringList());
        return ok;
    }
    case SettingType::data:
        store.setData(setting.key, text.toUtf8());
        return true;
    }
    return false;
}

QString expectedForm(const Setting &setting)
{
    if (!setting.choices.isEmpty())
        return CommandLineTexts::tr("one of %1").arg(setting.choices.join(QLatin1String(", ")));
    switch (setting.type) {
    case SettingType::boolean:
        return CommandLineTexts::tr("true or false");
    case SettingType::integer:
        return CommandLineTexts::tr("a whole number");
    case SettingType::stringList:
        return CommandLineTexts::tr("a JSON array of strings");
    case SettingType::string:
    case SettingType::data:
        break;
    }
    return CommandLineTexts::tr("a text");
}

int write(const DefaultsRequest &request, DefaultsStore &defaults)
{
    const Setting *setting = settingNamed(request.key);
    if (!setting) {
        complainOfKey(request.key);
        return exitBadArguments;
    }
    if (!store(*setting, qString(request.value), defaults)) {
        complain(CommandLineTexts::tr("VALUE of %1: expected %2, got \"%3\"")
                     .arg(qString(request.key), expectedForm(*setting), qString(request.value)));
        return exitBadArguments;
    }
    // The store keeps what it is given; what it is read as is the program's matter.
    if (!setting->choices.isEmpty() && !setting->choices.contains(qString(request.value)))
        complain(CommandLineTexts::tr("%1 knows only %2; \"%3\" is kept, but read as %4")
                     .arg(qString(request.key), setting->choices.join(QLatin1String(", ")),
                          qString(request.value), setting->registeredDefault.toVariant().toString()));
    return exitDone;
}

int remove(const std::string &key, DefaultsStore &store)
{
    if (!settingNamed(key) && !store.keys().contains(qString(key))) {
        complainOfKey(key);
        return exitBadArguments;
    }
    store.remove(qString(key));
    return exitDone;
}

int perform(const DefaultsRequest &request, DefaultsStore &store)
{
    switch (request.action) {
    case DefaultsRequest::Action::list:
        return list(store);
    case DefaultsRequest::Action::read:
        return read(request.key, store);
    case DefaultsRequest::Action::write:
        return write(request, store);
    case DefaultsRequest::Action::remove:
        return remove(request.key, store);
    }
    return exitBadArguments;
}

} // namespace

int runDefaults(const DefaultsRequest &request, DefaultsStore &store)
{
    bool failed = false;
    QObject context;
    QObject::connect(&store, &DefaultsStore::writeFailed, &context, [&failed](const QString &reason) {
        failed = true;
        complain(reason);
    });
    const int status = perform(request, store);
    return failed ? exitCouldNot : status;
}

} // namespace mivora
