#include "CalendarEds/EdsMaker.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <stdexcept>

namespace support {

namespace {

constexpr int longestWait = 60'000;

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

std::string EdsMaker::call(const std::vector<std::string> &words)
{
    QJsonArray line;
    for (const std::string &word : words)
        line.append(QString::fromStdString(word));
    m_tool.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
    while (!m_tool.canReadLine())
        if (!m_tool.waitForReadyRead(longestWait))
            throw std::runtime_error(words.front() + ": no answer");
    const QJsonDocument answer = QJsonDocument::fromJson(m_tool.readLine());
    if (!answer.isArray())
        throw std::runtime_error(answer.object().value(QLatin1String("error")).toString().toStdString());
    return answer.array().at(0).toString().toStdString();
}

} // namespace support
