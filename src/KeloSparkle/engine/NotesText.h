#pragma once

#include <QString>

namespace kelo {

/// Release notes to be shown as they are: without control characters, and no longer than a person reads.
QString plainNotes(const QString &text);

/// What a person reads in notes that are written in HTML. Nothing that they refer to is fetched or opened.
QString notesOfMarkup(const QString &html);

} // namespace kelo
