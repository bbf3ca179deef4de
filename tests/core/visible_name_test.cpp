#include "core/visible_name.h"
#include "support/test_main.h"

using namespace velmora;

class VisibleNameTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void namesWhatWouldDeceiveOrBreakALine()
    {
        const QList<std::pair<QString, QString>> names{
            {QStringLiteral("plain [x] <b>.txt"), QStringLiteral("plain [x] <b>.txt")},
            {QStringLiteral("a\nb\tc\x1B[31m"), QStringLiteral("a[LF]b[TAB]c[ESC][31m")},
            {QStringLiteral("photo\u202Egnp.exe"), QStringLiteral("photo[RLO]gnp.exe")},
            {QStringLiteral("\u2066x\u2069\u200F\uFEFF\u2028"), QStringLiteral("[LRI]x[PDI][RLM][BOM][LS]")},
            {QStringLiteral("Ä 文档 \U0001F468\u200D\U0001F469 \u0646\u200C\u0647"),
             QStringLiteral("Ä 文档 \U0001F468\u200D\U0001F469 \u0646\u200C\u0647")},
            {QStringLiteral("a\u200Db \U000E0041"), QStringLiteral("a[ZWJ]b [E0041]")},
            {QStringLiteral("x") + QChar(0xD83D), QStringLiteral("x[D83D]")},
            {QStringLiteral("a") + QChar(0xDCE9) + u'b', QStringLiteral("a[xE9]b")},
            {QString(), QString()},
        };
        for (const auto &[name, visible] : names)
            QCOMPARE(visibleName(name), visible);
    }
};

VELMORA_TEST(VisibleNameTest)
#include "visible_name_test.moc"
