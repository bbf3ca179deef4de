#include "folder/compare/entry_opener.h"
#include "folder_engine/memory_tree.h"
#include "folder_engine/test_tree.h"
#include "support/recording_host.h"
#include "support/test_main.h"
#include "vfs/local_folder.h"

#include <QFileInfo>
#include <QSignalSpy>
#include <QVariantList>

using namespace velmora;
using namespace velmora::test;

class EntryOpenerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// An entry of a tree in memory beside one on disk: the first gets a path for as long as the opener lives.
    void laysOutWhatHasNoPath()
    {
        TestTree disk;
        disk.file(word("right/f.txt"), "two");
        MemoryTree tree;
        tree.addFile(word("/f.txt"), "one");
        tree.addFile(word("/broken"), "one").failsAt = 1;
        const SourcePair sources{tree.at().source, localFolder(disk.right()).source};
        const auto entry = [&](const char *name) {
            FolderDiffItem item;
            item.name = word(name);
            item.leftPath = u'/' + item.name;
            if (QFileInfo::exists(disk.right() + item.leftPath))
                item.rightPath = disk.right() + item.leftPath;
            return item;
        };
        const RecordingHost host;
        QString path;
        {
            EntryOpener opener(host);
            QSignalSpy wanted(&opener, &EntryOpener::wanted);
            QSignalSpy gone(&opener, &EntryOpener::gone);
            QSignalSpy unreadable(&opener, &EntryOpener::unreadable);
            opener.open(sources, entry("f.txt"));
            QTRY_COMPARE(wanted.size(), 1);
            path = wanted.first().at(1).toString();
            QCOMPARE(QFileInfo(path).size(), 3);
            QCOMPARE(wanted.first(), (QVariantList{word("text"), path, disk.right() + word("/f.txt")}));
            opener.openAs(word("binary"), sources, entry("f.txt"));
            QTRY_COMPARE(wanted.size(), 2);
            QCOMPARE(wanted.last().first(), QVariant(word("binary")));
            opener.open(sources, entry("broken"));
            QTRY_COMPARE(unreadable.size(), 1);
            opener.open(sources, entry("nothing"));
            QTRY_COMPARE(gone.size(), 1);
            QCOMPARE(gone.first(), (QVariantList{word("nothing"), word("/nothing")}));
            QCOMPARE(opener.openedOf({entry("broken"), entry("f.txt"), entry("nothing")}), words("f.txt"));
        }
        QVERIFY(!QFileInfo::exists(path));
    }
};

VELMORA_TEST(EntryOpenerTest)
#include "entry_opener_test.moc"
