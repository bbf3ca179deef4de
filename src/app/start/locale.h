#pragma once

#include <QString>

namespace velmora {

/// The interface's locale, a code such as "en_US"; never empty. Process-wide, interface thread.
[[nodiscard]] QString currentLocale();

/// An empty code stands for "en_US". Changes neither the settings nor the texts.
void setCurrentLocale(const QString &code);

/// Makes the stored locale the current one and returns it. Profiles of old hold it as a number, which is read when
/// nothing else is there.
QString loadLocale();

/// Stores the current locale and drops the number of old.
void saveLocale();

/// Replaces the application's translation, that of the toolkit's own dialogs included, by the one of the current
/// locale; English needs none, and a locale without one is shown in English. Texts already on the screen stay.
void installTranslator();

} // namespace velmora
