#include "CalendarEds/EdsMaker.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <stdexcept>

namespace support {

namespace {

constexpr int longestWait = 60'000;

std::string nameOf(EdsMaker::Which which)
{
    return which == EdsMaker::Which::thisOne ? "this" : "all";
}

} // namespace

EdsMaker::EdsMaker()
{
    m_tool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_tool.start(QCoreApplication::applicationDirPath() + QStringLiteral("/eds-maker"), {});
}

EdsMaker::~EdsMaker()
{
    m_tool.closeWriteChannel();
    if (!m_tool.waitForFinished(5000))
        m_tool.kill();
    m_tool.waitForFinished(5000);
}

std::string EdsMaker::call(const char *command, const std::vector<std::string> &arguments)
{
    QJsonArray words{QString::fromLatin1(command)};
    for (const std::string &argument : arguments)
        words.append(QString::fromStdString(argument));
    m_tool.write(QJsonDocument(words).toJson(QJsonDocument::Compact) + '\n');
    while (!m_tool.canReadLine())
        if (!m_tool.waitForReadyRead(longestWait))
            throw std::runtime_error(std::string(command) + ": no answer");
    const QJsonDocument answer = QJsonDocument::fromJson(m_tool.readLine());
    if (!answer.isArray())
        throw std::runtime_error(answer.object().value(QLatin1String("error")).toString().toStdString());
    return answer.array().at(0).toString().toStdString();
}

std::string EdsMaker::addCalendar(const std::string &title, const std::string &color)
{
    return call("addCalendar", {title, color});
}

std::string EdsMaker::addCalDav(const std::string &title, int port, const std::string &path,
                                const std::string &address, const std::string &user)
{
    return call("addCalDav", {title, std::to_string(port), path, address, user});
}

void EdsMaker::signIn(const std::string &calendar, const std::string &user, const std::string &password)
{
    call("signIn", {calendar, user, password});
}

void EdsMaker::rename(const std::string &calendar, const std::string &title)
{
    call("rename", {calendar, title});
}

void EdsMaker::recolor(const std::string &calendar, const std::string &color)
{
    call("recolor", {calendar, color});
}

void EdsMaker::setEnabled(const std::string &calendar, bool enabled)
{
    call("setEnabled", {calendar, enabled ? "true" : "false"});
}

void EdsMaker::removeCalendar(const std::string &calendar)
{
    call("removeCalendar", {calendar});
}

void EdsMaker::create(const std::string &calendar, const std::string &event)
{
    call("create", {calendar, event});
}

void EdsMaker::modify(const std::string &calendar, const std::string &event, Which which)
{
    call("modify", {calendar, event, nameOf(which)});
}

void EdsMaker::remove(const std::string &calendar, const std::string &uid, const std::string &recurrenceID,
                      Which which)
{
    call("remove", {calendar, uid, recurrenceID, nameOf(which)});
}

void EdsMaker::import(const std::string &calendar, const std::string &text)
{
    call("import", {calendar, text});
}

void EdsMaker::refresh(const std::string &calendar)
{
    call("refresh", {calendar});
}

} // namespace support
