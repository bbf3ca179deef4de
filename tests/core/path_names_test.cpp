#include "core/path_names.h"
#include "support/test_main.h"

using namespace velmora;

class PathNamesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesPathsApartAndPutsThemTogether()
    {
        struct Case {
            const char *path;
            const char *parent;
            const char *name;
        };
        for (const Case &c : {Case{"a/b/c", "a/b", "c"}, Case{"a", "", "a"}, Case{"/a", "/", "a"}, Case{"/", "/", ""},
                              Case{"", "", ""}, Case{"C:/a", "C:", "a"}, Case{"//host/share", "//host", "share"},
                              Case{"a\\b", "", "a\\b"}, Case{"folder/", "folder", ""}}) {
            const QString path = QString::fromUtf8(c.path);
            QCOMPARE(parentPath(path), QString::fromUtf8(c.parent));
            QCOMPARE(bareName(path), QString::fromUtf8(c.name));
            QCOMPARE(joinedPath(parentPath(path), bareName(path)), path);
        }
        const auto inside = [](const char *path, const char *folder) {
            return isInside(QString::fromUtf8(path), QString::fromUtf8(folder));
        };
        QVERIFY(inside("a/b", "a") && inside("a/b/c", "a/") && inside("/a", "/") && inside("a", ""));
        QVERIFY(!inside("a", "a") && !inside("ab", "a") && !inside("a/", "a") && !inside("A/b", "a"));
        for (const char *address : {"sftp://me@host/a/b", "git:HEAD:a/b", "GIT:v1:/a"})
            QVERIFY(isAddress(QString::fromUtf8(address)) &&
                    nativePath(QString::fromUtf8(address)) == QString::fromUtf8(address));
        for (const char *path : {"C:/a", "c:", "/a:b", "a/b:c", "", ":index", "//host/a", "a b:c", "sftp"})
            QVERIFY2(!isAddress(QString::fromUtf8(path)), path);
    }
};

VELMORA_TEST(PathNamesTest)
#include "path_names_test.moc"
