#pragma once

#include <QCoreApplication>

/// The one translation context of the product: every text that a person sees is written `Velmora::tr("English
/// source")`, the form that the translation tools read. Outside the namespace so that they and the program agree on the
/// name.
class Velmora {
    Q_DECLARE_TR_FUNCTIONS(Velmora)
};
