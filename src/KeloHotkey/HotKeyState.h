#pragma once

#include <QMetaType>
#include <QString>

namespace kelo {

/// How it stands with a global shortcut.
struct HotKeyState
{
    Q_GADGET

public:
    /// The log has it by these names.
    enum class Kind {
        /// None is registered, but one could be.
        off,
        /// The desktop has been asked, and may be asking the user.
        waiting,
        /// It works.
        registered,
        /// The user closed the desktop's question.
        cancelled,
        /// The desktop said no.
        refused,
        /// It worked, and the desktop has ended it.
        ended,
        /// Somebody else has the combination.
        taken,
        /// Programs can have none in this session.
        impossible,
    };
    Q_ENUM(Kind)

    Kind kind = Kind::off;
    /// Of one that is registered or taken: its keys in the words of the desktop. Empty when no keys are bound
    /// to it, or the desktop doesn't tell them.
    QString keys{};
    /// The desktop itself has set the keys, whatever was wished for.
    bool areKeysOfDesktop = false;
    /// The desktop has a dialog for the keys, see HotKeyService::configure().
    bool isConfigurable = false;

    friend bool operator==(const HotKeyState &, const HotKeyState &) = default;
};

} // namespace kelo
