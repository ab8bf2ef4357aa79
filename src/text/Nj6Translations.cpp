// SPDX-License-Identifier: MIT
#include <Nj6Translations.h>

#include <QStringList>
#include <QTranslator>

// Brings the compiled-in texts into the program, also from a static library, of which only what is called is
// linked. The macro declares a function, so it cannot stand in a namespace.
static void registerCompiledInTexts()
{
    Q_INIT_RESOURCE(j6CoreTranslations);
}

namespace {

void clear(QTranslator &translator)
{
    // No file is loaded that happens to have a fitting name, as an empty name would.
    const uchar *const nothing = nullptr;
    translator.load(nothing, 0);
}

bool isLanguageOfTheSources(const QLocale &locale)
{
    return locale.language() == QLocale::English || locale.language() == QLocale::C;
}

bool loadFirst(QTranslator &translator, const QStringList &languages)
{
    for (const QString &language : languages) {
        const QLocale locale(language);
        if (isLanguageOfTheSources(locale))
            return false;
        if (translator.load(locale, QStringLiteral("j6Core"), QStringLiteral("_"),
                            QStringLiteral(":/j6Core/translations")))
            return true;
    }
    return false;
}

} // namespace

bool Nj6Translations::load(QTranslator &translator, const QLocale &locale)
{
    registerCompiledInTexts();
    clear(translator);
    return loadFirst(translator, locale.uiLanguages());
}
