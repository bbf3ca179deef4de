#include "session/diff_colours.h"
#include "support/test_main.h"
#include "text/view/syntax_colours.h"

#include <cmath>

using namespace velmora;

namespace {

double luminance(const QColor &colour)
{
    const auto expand = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * expand(colour.redF()) + 0.7152 * expand(colour.greenF()) + 0.0722 * expand(colour.blueF());
}

/// The contrast ratio of the Web Content Accessibility Guidelines.
double contrast(const QColor &a, const QColor &b)
{
    const double one = luminance(a) + 0.05;
    const double other = luminance(b) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

} // namespace

class SyntaxColoursTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyInkIsReadableBehindEveryKindOfRow()
    {
        using enum DiffColour;
        for (const bool dark : {false, true}) {
            const RoleInks inks = syntaxInks(dark);
            QVERIFY(!inks[std::size_t(SyntaxRole::Text)].isValid());
            for (std::size_t role = 1; role < inks.size(); ++role) {
                QVERIFY(inks[role].isValid());
                for (const DiffColour background : {Background, Added, Removed, Modified, Unimportant}) {
                    const double ratio = contrast(inks[role], diffColour(background, dark));
                    QVERIFY2(ratio >= 4.5, qPrintable(QStringLiteral("role %1 on %2, dark %3: %4")
                                                          .arg(role)
                                                          .arg(int(background))
                                                          .arg(dark)
                                                          .arg(ratio)));
                }
            }
        }
    }

    void differencesStayTheStrongerSign()
    {
        for (const bool dark : {false, true}) {
            // The inks are of one lightness and away from that of the text, which changed characters keep.
            const QColor background = diffColour(DiffColour::Background, dark);
            const double text = contrast(diffColour(DiffColour::Text, dark), background);
            double least = 100;
            double most = 0;
            const RoleInks inks = syntaxInks(dark);
            for (std::size_t role = 1; role < inks.size(); ++role) {
                least = std::min(least, contrast(inks[role], background));
                most = std::max(most, contrast(inks[role], background));
            }
            QVERIFY(most < 1.25 * least);
            QVERIFY(1.4 * most < text);
        }
    }
};

VELMORA_TEST(SyntaxColoursTest)
#include "syntax_colours_test.moc"
