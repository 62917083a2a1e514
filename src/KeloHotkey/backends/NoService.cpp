#include "KeloHotkey/backends/NoService.h"

#include <QLoggingCategory>

namespace kelo {

namespace {

Q_LOGGING_CATEGORY(hotKeyLog, "kelo.hotkey")

} // namespace

NoService::NoService(const HotKeyPurpose &purpose)
{
    logAdvice(purpose);
}

void NoService::logAdvice(const HotKeyPurpose &purpose)
{
    qCInfo(hotKeyLog,
           "This session has no global shortcuts for applications. Bind \"%s\" to a key in the compositor.",
           qUtf8Printable(purpose.command));
}

} // namespace kelo
