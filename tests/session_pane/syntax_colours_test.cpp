#include "session/diff_colours.h"
#include "session/pane/syntax_colours.h"
#include "support/contrast.h"
#include "support/test_main.h"

using namespace velmora;
using namespace velmora::test;

class SyntaxColoursTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// And of one lightness, away from that of the text, which changed characters keep: differences are the stronger
    /// sign.
    void inksAreReadableAndFainterThanTheText()
    {
        using enum DiffColour;
        for (const bool dark : {false, true}) {
            const RoleInks inks = syntaxInks(dark);
            QVERIFY(!inks[std::size_t(SyntaxRole::Text)].isValid());
            double least = 100;
            double most = 0;
            for (std::size_t role = 1; role < inks.size(); ++role) {
                QVERIFY(inks[role].isValid());
                for (const DiffColour background : {Background, Added, Removed, Modified, Unimportant}) {
                    const double ratio = contrast(inks[role], diffColour(background, dark));
                    const auto which = QStringLiteral("role %1 on %2, dark %3: %4").arg(role).arg(int(background));
                    QVERIFY2(ratio >= 4.5, qPrintable(which.arg(dark).arg(ratio)));
                }
                least = std::min(least, contrast(inks[role], diffColour(Background, dark)));
                most = std::max(most, contrast(inks[role], diffColour(Background, dark)));
            }
            QVERIFY(most < 1.25 * least);
            QVERIFY(1.4 * most < contrast(diffColour(Text, dark), diffColour(Background, dark)));
        }
    }
};

VELMORA_TEST(SyntaxColoursTest)
#include "syntax_colours_test.moc"
