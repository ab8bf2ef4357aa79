// SPDX-License-Identifier: MIT
#ifndef NJ6TRANSLATIONS_H
#define NJ6TRANSLATIONS_H

#include <j6Core_export.h>

#include <QLocale>

class QTranslator;

/**
 * @brief The translations of the library's own texts for users: names of units and user levels, sizes, titles
 * and messages.
 *
 * The texts in the sources are English; German is compiled in. They are translated at every call, so an
 * installed translator takes effect at once, and nothing that the library parses depends on one.
 *
 * @code
 * QTranslator coreTexts; // lives as long as the application
 * if (Nj6Translations::load(coreTexts))
 *     QCoreApplication::installTranslator(&coreTexts);
 * @endcode
 *
 * The same files are installed below share/j6Core/translations (j6Core_de.qm) for programs that load them by
 * QTranslator::load() themselves.
 */
namespace Nj6Translations {

/**
 * @brief Loads the texts in the first language of the locale (QLocale::uiLanguages()) that the library has;
 * English counts, although it needs no file.
 *
 * True when the translator holds texts afterwards. False, and the translator is empty, when the texts remain
 * English: a user who prefers English before German gets English. What the translator held before is dropped
 * in both cases, so that one that is installed can change its language; QCoreApplication then sends
 * QEvent::LanguageChange.
 *
 * Works from the static library as well. Call it on the thread of the application.
 */
J6CORE_EXPORT bool load(QTranslator &translator, const QLocale &locale = QLocale());

} // namespace Nj6Translations

#endif // NJ6TRANSLATIONS_H
