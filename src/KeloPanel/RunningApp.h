#pragma once

#include <QString>
#include <QtGlobal>

namespace kelo {

/// A program that has a window on the desktop.
struct RunningApp
{
    qint64 processID = 0;
    /// The class of its window; may be empty.
    QString name;

    friend bool operator==(const RunningApp &, const RunningApp &) = default;
};

} // namespace kelo
