#pragma once

#include "Platform/Activation.h"

#include <QPointer>
#include <QString>
#include <chrono>
#include <functional>

namespace mivora {

/// How a command went.
struct CommandResult
{
    /// Why it could not be done, in one line; empty when it was done.
    QString failure{};

    bool isDone() const { return failure.isEmpty(); }
};

/// A command that came over the bus.
struct BusCommand
{
    QString action;
    QString argument;
    /// Gone when nobody waits for the answer any more.
    QPointer<QObject> caller;
    /// To be called once.
    std::function<void(const CommandResult &result)> answer;
    Activation activation{};
};

/// How long a caller waits for the answer to a command.
inline constexpr std::chrono::milliseconds callerPatience{4'500};

} // namespace mivora
