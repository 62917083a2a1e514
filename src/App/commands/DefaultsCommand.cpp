#include "App/commands/Commands.h"

#include "App/commands/Output.h"
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
        const QJsonValue value = setting.readFrom(store);
        if (!value.isUndefined())
            print(QByteArray(setting.key.data(), setting.key.size()) + ' ' + printed(value) + '\n');
    }
    return exitDone;
}

int read(const std::string &key, const DefaultsStore &store)
{
    const Setting *setting = settingNamed(qString(key));
    if (!setting) {
        complainOfKey(key);
        return exitBadArguments;
    }
    const QJsonValue value = setting->readFrom(store);
    if (value.isUndefined()) {
        complain(CommandLineTexts::tr("%1 is not set").arg(qString(key)));
        return exitCouldNot;
    }
    print(printed(value) + '\n');
    return exitDone;
}

/// What `text` stands for as a value of the setting; undefined when it is none.
QJsonValue valueFrom(const QString &text, QJsonValue::Type type)
{
    const QJsonValue none(QJsonValue::Undefined);
    if (type == QJsonValue::String)
        return text;
    if (type == QJsonValue::Bool) {
        const bool isTrue = text == QLatin1String("true");
        return isTrue || text == QLatin1String("false") ? QJsonValue(isTrue) : none;
    }
    if (type == QJsonValue::Double) {
        bool isNumber = false;
        const qint64 number = text.toLongLong(&isNumber);
        return isNumber ? QJsonValue(number) : none;
    }
    const QJsonDocument json = QJsonDocument::fromJson(text.toUtf8());
    const QJsonArray list = json.array();
    const bool isList =
        json.isArray() && std::ranges::all_of(list, [](const QJsonValue &v) { return v.isString(); });
    return isList ? QJsonValue(list) : none;
}

QString expectedForm(const Setting &setting)
{
    if (!setting.choices.isEmpty())
        return CommandLineTexts::tr("one of %1").arg(setting.choices.join(QLatin1String(", ")));
    if (setting.type == QJsonValue::Bool)
        return CommandLineTexts::tr("true or false");
    if (setting.type == QJsonValue::Double)
        return CommandLineTexts::tr("a whole number");
    return CommandLineTexts::tr("a JSON array of strings");
}

int write(const DefaultsRequest &request, DefaultsStore &store)
{
    const Setting *setting = settingNamed(qString(request.key));
    if (!setting) {
        complainOfKey(request.key);
        return exitBadArguments;
    }
    const QJsonValue value = valueFrom(qString(request.value), setting->type);
    if (value.isUndefined()) {
        complain(CommandLineTexts::tr("VALUE of %1: expected %2, got \"%3\"")
                     .arg(qString(request.key), expectedForm(*setting), qString(request.value)));
        return exitBadArguments;
    }
    store.setValue(setting->key, value);
    // The store keeps what it is given; what it is read as is the program's matter.
    if (!setting->choices.isEmpty() && !setting->choices.contains(qString(request.value)))
        complain(CommandLineTexts::tr("%1 knows only %2; \"%3\" is kept, but read as %4")
                     .arg(qString(request.key), setting->choices.join(QLatin1String(", ")),
                          qString(request.value), setting->registeredDefault.toVariant().toString()));
    return exitDone;
}

int remove(const std::string &key, DefaultsStore &store)
{
    if (!settingNamed(qString(key)) && !store.values().contains(qString(key))) {
        complainOfKey(key);
        return exitBadArguments;
    }
    store.setValue(qString(key), QJsonValue::Undefined);
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
