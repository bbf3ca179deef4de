#include "folder/compare/folder_place.h"
#include "support/files.h"
#include "support/test_main.h"

using namespace velmora;
using namespace velmora::test;

class FolderPlaceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goesUpAndKnowsWhereFrom()
    {
        FolderPlace place;
        QVERIFY(place.enter({word("/a/b"), word("/c/d"), {}}));
        QVERIFY(!place.enter({word("/a/b"), word("/c/d"), {}}));
        QCOMPARE(place.title(), word("b <-> d"));
        const std::optional<SessionPaths> above = place.goUp({word("/nowhere/x/b/"), word("/c/d"), {}});
        QVERIFY(above && above->left.endsWith(QLatin1String("/nowhere/x")) &&
                above->right.endsWith(QLatin1String("/c")));
        QCOMPARE(place.takeOrigin(), word("b"));
        QCOMPARE(place.takeOrigin(), QString());
        QVERIFY(!place.goUp({word("/"), word("/c/d"), {}}));
        QVERIFY(!place.goUp({word("/a"), {}, {}}));
    }
};

VELMORA_TEST(FolderPlaceTest)
#include "folder_place_test.moc"
