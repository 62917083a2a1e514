#pragma once

#include <QLocale>

namespace mivora {

/// Gives the application its texts in the first of the languages of `locale` that there is a translation
/// for, Qt's own texts in the same language where they are installed. English, with its plural forms, when
/// there is none.
///
/// Needs the application object and comes before anything is shown. Called again, it changes the language.
void installTranslations(const QLocale &locale);

/// The same with the languages of the desktop: those of LANGUAGE, or else the one of LC_ALL, LC_MESSAGES or
/// LANG. As with gettext, the C locale is English, whatever LANGUAGE says.
void installTranslations();

} // namespace mivora
