#pragma once

#include <QCoreApplication>

namespace mivora {

/// The context, for translators, of what the command line says. Texts are translated only while there is an
/// application object.
struct CommandLineTexts
{
    Q_DECLARE_TR_FUNCTIONS(CommandLine)
};

} // namespace mivora
