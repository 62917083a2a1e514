#pragma once

#include "KeloTheme/ViewHost.h"

#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace kelo {

/// Makes the window of \a spec; null, with a line in the log, when its QML has errors.
std::unique_ptr<QQuickWindow> makeViewWindow(QQmlEngine &engine, const ViewSpec &spec);

} // namespace kelo
