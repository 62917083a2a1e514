#pragma once

#include "Platform/SystemLog.h"

#include <QByteArray>
#include <QCoreApplication>

namespace mivora {

/// The context, for translators, of what the command line says. Texts are translated only while there is an
/// application object.
struct CommandLineTexts
{
    Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

/// Writes `text` to standard output at once. When that can't be done the program ends: quietly where the
/// reader is gone, else with the reason.
void print(const QByteArray &text);

/// Writes "mivora: ", `message` on one line, and a line end to standard error.
void complain(const QString &message);

/// `json`, UTF-8, with what disturbs a line or a terminal as \\uNNNN in its texts, which means the same
/// (RFC 8259, section 7). Its own line ends stay.
QByteArray printableJson(const QByteArray &json);

} // namespace mivora
