#include "session/diff_colours.h"
#include "support/contrast.h"
#include "support/test_main.h"
#include "text/view/syntax_colours.h"

using namespace velmora;
using namespace velmora::test;

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
