#include "core/settings_store.h"
#include "folder/engine/folder_engine.h"
#include "folder_actions/actions_fixture.h"
#include "folder_engine/memory_tree.h"
#include "settings/options/kept_copies.h"
#include "support/test_main.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <stdexcept>

using namespace velmora;
using namespace velmora::test;
using Command = FolderCommand;

class FolderActionsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void aSelectionIsCopiedToTheOtherSide()
    {
        ActionsFixture f;
        f.make("left/a=1 left/sub/b=2 left/sub/deep/c=3 right/sub/keep=k left/d=4");
        f.carryOut(Command::CopyToRight, lines("a sub"));
        QCOMPARE(f.picture("right"), word("a=1 sub/ sub/b=2 sub/deep/ sub/deep/c=3 sub/keep=k"));
        QCOMPARE(f.log(), words("copy: left/a -> right/a|copy: left/sub -> right/sub|Done: 4 succeeded, 0 failed"));
        static const QRegularExpression time(word("^\\d\\d:\\d\\d:\\d\\d copy: "));
        QVERIFY(time.match(f.lines.first()).hasMatch());
        QCOMPARE(f.touched, lines("a sub/b sub/deep sub/deep/c"));
        QCOMPARE(f.status, word("Done: 4 succeeded, 0 failed"));
        QVERIFY(f.sawCount);
        QVERIFY(f.answers.asked().isEmpty());
    }

    void whatFiltersHideIsNotTouched()
    {
        ActionsFixture f;
        if (!f.files.hasRecycleBin())
            QSKIP("no recycle bin here");
        f.context.isHidden = [](const FolderDiffItem &item) { return item.name.endsWith(QLatin1String(".o")); };
        f.make("left/src/a.c=1 left/src/a.o=2 right/out/b.o=3 right/out/b.c=4");
        f.carryOut(Command::MirrorToRight);
        f.click("planStart");
        QCOMPARE(f.picture("right"), word("out/ out/b.o=3 src/ src/a.c=1"));
        f.compare();
        f.carryOut(Command::Delete, lines("out"), Side::Right);
        QVERIFY(f.has("right/out/b.o=3"));
    }

    void replacingIsAskedWhereMuchIsAtStake()
    {
        ActionsFixture f;
        f.make("right/one=old right/two=old right/three=old right/late=old left/one=new left/two=new left/three=new "
               "left/late=new");
        f.files.setTime(word("right/late"), 1000000);
        f.compare();
        f.carryOut(Command::CopyToRight, lines("one")); // an older file goes, and it can be undone
        QVERIFY(f.answers.asked().isEmpty());
        QVERIFY(f.has("right/one=new"));

        for (const bool moves : {false, true}) {
            f.carryOut(moves ? Command::MoveToRight : Command::CopyToRight, lines("late"));
            QCOMPARE(f.asked(), word("A newer file will be replaced by an older one.\n\nRight side: right/late"));
            QCOMPARE(f.askedTitle(), moves ? word("Move") : word("Copy"));
            QVERIFY(f.has("right/late=old"));
        }

        f.answers.answerNumber(2);
        f.carryOut(Command::CopyToRight, lines("three two")); // each alone would not be asked about
        QCOMPARE(f.asked(), word("2 files will be replaced.\n\nRight side: right"));
        QCOMPARE(f.rows().mid(1), lines("three two"));
        f.click("planCancel");
        QVERIFY(f.has("right/two=old"));
        f.answers.answerNumber(1);
        f.carryOut(Command::CopyToRight, lines("late two"));
        QVERIFY(f.has("right/late=new"));
    }

    void withoutKeptCopiesReplacingIsAskedAlways()
    {
        ActionsFixture f;
        SessionSettings settings;
        saveKeptCopies(settings, {2, 30}); // bytes
        f.make("right/big=old-text right/small=ol left/big=new left/small=new");
        f.carryOut(Command::CopyToRight, lines("small"));
        QVERIFY(f.has("right/small=new"));
        f.carryOut(Command::CopyToRight, lines("big"));
        QVERIFY(
            f.asked().startsWith(word("A file will be replaced, and its old contents will not be kept for undoing.")));
        QVERIFY(f.has("right/big=old-text"));
        f.answers.answerNumber(1);
        f.carryOut(Command::CopyToRight, lines("big"));
        QVERIFY(f.has("right/big=new"));
        QVERIFY(f.log().contains(word("not kept for undoing: 1")));
        settings.clear();
    }

    /// A link to a folder is copied as the link; that its contents are not is no failure.
    void linksAreCopiedAsLinks()
    {
        ActionsFixture f;
        f.make("other/in=1 left/link->../other");
        if (!QFileInfo(f.files.path(word("left/link"))).isSymbolicLink())
            QSKIP("no links here");
        f.carryOut(Command::CopyToRight, lines("link"));
        QVERIFY2(f.answers.asked().isEmpty() && !f.opened(), qPrintable(f.asked()));
        QVERIFY(QFileInfo(f.files.path(word("right/link"))).isSymbolicLink());
        QCOMPARE(f.log().first(), word("copy: left/link -> right/link"));
    }

    void deletingIsConfirmedAndUndone()
    {
        ActionsFixture f;
        if (!f.files.hasRecycleBin())
            QSKIP("no recycle bin here");
        f.make("left/a=1 left/sub/b=2 right/a=1 right/c=3");
        const QStringList before = f.files.picture();
        f.carryOut(Command::Delete, lines("a"), Side::Left);
        QCOMPARE(f.askedTitle(), word("Delete"));
        QVERIFY(f.asked().startsWith(QLatin1String("Delete a?\nLeft side: left/a\n")));
        QCOMPARE(f.files.picture(), before);
        QCOMPARE(f.finished, 0);

        for (const Command command : {Command::Delete, Command::DeleteForGood}) {
            f.answers.answerNumber(1);
            f.carryOut(command, lines("a"), Side::Left);
            QCOMPARE(f.log(), words("delete: left/a|Done: 1 succeeded, 0 failed"));
            QVERIFY(!f.has("left/a=1"));
            f.carryOut(Command::UndoLast);
            QVERIFY2(f.opened(), qPrintable(f.status));
            f.click("planStart");
            QCOMPARE(f.log().first(), word("undo: Delete: a"));
            QCOMPARE(f.touched, lines("a"));
            QCOMPARE(f.files.picture(), before);
            f.compare();
        }

        f.carryOut(Command::Delete, lines("a sub"));
        QCOMPARE(f.without(f.opened()->findChild<QLabel *>(word("planQuestion"))->text()),
                 word("Delete 2 entries?\nLeft side: 2 entries in left\nRight side: right/a"));
        f.click("planStart");
        QCOMPARE(f.files.picture(), lines("right/c=3"));
        QCOMPARE(f.log().first(3), words("delete: left/a|delete: right/a|delete: left/sub"));
    }

    void entriesAreRenamedOnBothSides()
    {
        ActionsFixture f;
        f.make("left/sub/a=1 right/sub/a=1 left/taken=2");
        f.answers.answerText(word("b"));
        f.carryOut(Command::Rename, lines("sub/a"));
        QCOMPARE(f.askedTitle(), word("Rename"));
        QCOMPARE(f.asked(), word("New name:"));
        QCOMPARE(f.answers.asked().last().start, word("a"));
        QCOMPARE(f.log().first(2), words("rename: left/sub/a -> left/sub/b|rename: right/sub/a -> right/sub/b"));
        QCOMPARE(f.touched, lines("sub/a sub/b"));
        QCOMPARE(f.files.picture(), lines("left/sub/ left/sub/b=1 left/taken=2 right/sub/ right/sub/b=1"));

        f.compare();
        f.answers.answerText(word("a/b"));
        f.carryOut(Command::Rename, lines("taken"));
        QCOMPARE(f.askedTitle(), word("Rename failed"));
        QCOMPARE(f.asked(), word("Cannot rename: taken\n\nThis name is not allowed."));
        f.answers.answerText(word("sub"));
        f.carryOut(Command::Rename, lines("taken"));
        QCOMPARE(f.askedTitle(), word("Rename failed"));
        QVERIFY(f.asked().startsWith(QLatin1String("Cannot rename: left/")));
        QVERIFY(f.has("left/taken=2"));
    }

    void foldersAreMadeWhereTheSelectionIs()
    {
        ActionsFixture f;
        f.make("left/sub/a=1 right/other=2");
        f.answers.answerText(word("new"));
        f.carryOut(Command::NewFolder);
        QCOMPARE(f.asked(), word("Folder name:"));
        QCOMPARE(f.askedTitle(), word("New folder"));
        QCOMPARE(f.log().first(2), words("new folder: left/new|new folder: right/new"));
        f.answers.answerText(word("in"));
        f.carryOut(Command::NewFolder, lines("sub"), Side::Left);
        f.answers.answerText(word("beside"));
        f.carryOut(Command::NewFolder, lines("sub/a"), Side::Left);
        QCOMPARE(f.files.picture().join(u' '),
                 QStringLiteral("left/new/ left/sub/ left/sub/a=1 left/sub/beside/ left/sub/in/ right/new/ "
                                "right/other=2"));
        f.answers.answerText(word("other"));
        f.carryOut(Command::NewFolder, FolderSelection{{}, Side::Right});
        QCOMPARE(f.askedTitle(), word("New folder failed"));
        QVERIFY(f.asked().startsWith(QLatin1String("Cannot create: right/other\n\n")));
    }

    /// What is shown before a mirror is what is done by it, to the file.
    void aMirrorDoesWhatItsPreviewShows()
    {
        ActionsFixture f;
        if (!f.files.hasRecycleBin())
            QSKIP("no recycle bin here");
        f.make("left/new=1 left/changed=2 left/same=3 left/dir/x=4 right/changed=old right/same=3 right/gone=5 "
               "right/old/deep/y=6");
        f.carryOut(Command::MirrorToRight);
        QCOMPARE(f.opened()->windowTitle(), word("Confirm mirror sync"));
        QVERIFY(
            f.opened()
                ->findChild<QLabel *>(word("planQuestion"))
                ->text()
                .startsWith(QLatin1String("Mirror makes the destination identical to the source; extra items on the "
                                          "destination will be removed.")));
        QSet<QString> previewed;
        for (const QString &row : f.rows()) {
            if (!row.contains(u':')) // no group
                previewed.insert(row);
        }
        QCOMPARE(previewed.size(), 6);
        const QString before = f.picture("right");
        QTest::keyClick(f.opened(), Qt::Key_Return); // Return calls it off
        QTRY_VERIFY(!f.opened());
        QCOMPARE(f.picture("right"), before);

        f.carryOut(Command::MirrorToRight);
        f.click("planStart");
        QCOMPARE(f.picture("right"), f.picture("left"));
        QSet<QString> touched(f.touched.begin(), f.touched.end());
        QVERIFY(touched.contains(previewed));
        QCOMPARE(f.log().first(), word("mirror: left -> right"));

        f.carryOut(Command::UndoLast);
        f.click("planStart");
        QCOMPARE(f.picture("right"), before);
    }

    void aMirrorOfNothingIsAskedTwice()
    {
        ActionsFixture f;
        if (!f.files.hasRecycleBin())
            QSKIP("no recycle bin here");
        f.make("left/ right/a=1");
        f.carryOut(Command::MirrorToRight);
        QCOMPARE(f.askedTitle(), word("Confirm mirror sync"));
        QVERIFY(!f.opened());
        f.answers.answerNumber(1);
        f.carryOut(Command::MirrorToRight);
        QVERIFY(f.opened());
        f.click("planStart");
        QCOMPARE(f.files.picture(), QStringList());

        f.files.make("right/b=1");
        f.compare();
        f.files.remove(word("left"));
        f.answers.answerNumber(1);
        f.carryOut(Command::MirrorToRight);
        QVERIFY(!f.opened());
        QVERIFY(f.has("right/b=1"));
    }

    void aMirrorOfASelectionLeavesTheRestAlone()
    {
        ActionsFixture f;
        if (!f.files.hasRecycleBin())
            QSKIP("no recycle bin here");
        f.make("left/a/x=1 left/b/y=2 right/a/z=3 right/b/w=4 right/c=5");
        f.carryOut(Command::MirrorToRight, lines("a"));
        f.click("planStart");
        QCOMPARE(f.picture("right"), word("a/ a/x=1 b/ b/w=4 c=5"));
    }

    void updatesCopyWhatIsNewerAndDeleteNothing()
    {
        ActionsFixture f;
        f.make("left/both=old right/both=new right/r=1 left/l=2");
        f.carryOut(Command::UpdateRight);
        f.click("planStart");
        QCOMPARE(f.log().first(), word("update: left -> right"));
        QCOMPARE(f.files.picture(), lines("left/both=old left/l=2 right/both=new right/l=2 right/r=1"));
        f.compare();
        f.carryOut(Command::UpdateBoth);
        f.click("planStart");
        QCOMPARE(f.log().first(), word("update both: left <-> right"));
        QCOMPARE(f.picture("left"), word("both=new l=2 r=1"));
        f.compare();
        f.carryOut(Command::UpdateBoth);
        QVERIFY(!f.opened());
        QCOMPARE(f.asked(), word("There is nothing to do."));
    }

    void entriesGoToAnyFolder()
    {
        ActionsFixture f;
        f.make("left/a=1 left/sub/b=2 right/a=9 right/r=3 other/a=there");
        const QString other = f.files.path(word("other"));
        f.answers.answerPath(other);
        f.answers.answerNumber(2); // skip
        f.carryOut(Command::CopyTo, lines("a sub r"));
        QCOMPARE(f.answers.asked().first().title, word("Select destination folder"));
        QCOMPARE(f.picture("other"), word("a=there r=3 sub/ sub/b=2"));
        QVERIFY(f.log().contains(word("copy: left/sub -> other/sub")));
        QVERIFY(f.log().contains(word("Done: 3 succeeded, 0 failed")));

        f.answers.answerPath(other);
        f.answers.answerNumber(1); // replace
        f.carryOut(Command::MoveTo, lines("a"), Side::Right);
        QCOMPARE(f.picture("other"), word("a=9 r=3 sub/ sub/b=2"));
        QCOMPARE(f.log().first(), word("move: right/a -> other/a"));
        QCOMPARE(f.picture("right"), word("r=3"));
        QCOMPARE(f.touched, lines("a"));

        // Nothing is put in the place of itself.
        f.compare();
        f.answers.answerPath(f.files.left());
        f.answers.answerNumber(1);
        f.carryOut(Command::MoveTo, lines("a"), Side::Left);
        QCOMPARE(f.picture("left"), word("a=1 sub/ sub/b=2"));
    }

    void entriesAreMovedToTheOtherSide()
    {
        ActionsFixture f;
        f.make("right/sub/same=s right/sub/keep=k left/a=1 left/sub/b=2 left/sub/same=s left/sub/deep/c=3 "
               "left/x.o=4");
        const QStringList before = f.files.picture();
        f.carryOut(Command::MoveToRight, lines("a sub"));
        QCOMPARE(f.log(), words("move: left/a -> right/a|move: left/sub -> right/sub|Done: 7 succeeded, 0 failed"));
        QCOMPARE(f.picture("left"), word("x.o=4"));
        QCOMPARE(f.picture("right"), word("a=1 sub/ sub/b=2 sub/deep/ sub/deep/c=3 sub/keep=k sub/same=s"));
        QCOMPARE(f.touched, lines("a sub sub/b sub/deep sub/deep/c sub/same"));
        QVERIFY(f.answers.asked().isEmpty());
        f.carryOut(Command::UndoLast);
        f.click("planStart");
        QCOMPARE(f.files.picture(), before);

        // What is hidden stays, and so does the folder around it.
        f.context.isHidden = [](const FolderDiffItem &item) { return item.name == QLatin1String("sub/b"); };
        f.compare();
        f.carryOut(Command::MoveToRight, lines("sub"));
        QCOMPARE(f.picture("left"), word("a=1 sub/ sub/b=2 x.o=4"));
    }

    void levelsThatNobodyHasOpenedAreListedFirst()
    {
        ActionsFixture f;
        if (!f.files.hasRecycleBin())
            QSKIP("no recycle bin here");
        f.make("left/sub/deep/a=1 right/sub/b=2 right/gone/c=3 left/x=1 right/x=2");
        f.context.isWhole = false;
        f.context.items = compareFolderLevel(FolderInput::of(f.context.roots, f.context.options));
        f.context.isHidden = [](const FolderDiffItem &item) { return item.name == QLatin1String("sub/b"); };
        f.actions.setContext(f.context);
        f.carryOut(Command::CopyToRight, lines("sub"));
        QCOMPARE(f.picture("right/sub"), word("b=2 deep/ deep/a=1"));
        QCOMPARE(f.log().first(), word("copy: left/sub -> right/sub"));
        QVERIFY(f.touched.contains(word("sub/deep/a")));
        f.carryOut(Command::Delete, lines("sub"), Side::Right); // holds what is hidden
        if (f.opened())
            f.click("planStart");
        QVERIFY(f.has("right/sub/b=2"));
        f.carryOut(Command::MirrorToRight);
        f.click("planStart");
        QVERIFY(!f.has("right/gone/"));
        QVERIFY(f.has("right/x=1"));
    }

    /// Each failure of the file system while a command runs is told with the command's own words, and nothing is lost.
    void failuresAreToldInTheCommandsWords()
    {
        struct {
            Command command;
            const char *call;
            int journalCalls; ///< the calls of that name before, which write the journal
            const char *title, *text;
        } const cases[] = {
            {Command::CopyToRight, "openFile", 0, "Copy failed", "Cannot copy: left/a"},
            {Command::CopyToRight, "createFile", 1, "Copy failed", "Cannot copy to: right/a"},
            {Command::DeleteForGood, "createFile", 1, "Delete failed", "Cannot delete: left/a"},
            {Command::Rename, "move", 0, "Rename failed", "Cannot rename: left/a"},
            {Command::NewFolder, "makeFolder", 2, "New folder failed", "Cannot create: left/name"},
            {Command::MirrorToRight, "createFile", 1, "Mirror sync failed", "Mirror failed: left -> right"},
            {Command::UpdateRight, "createFile", 1, "Update sync failed", "Update failed: left -> right"},
            {Command::UpdateBoth, "createFile", 1, "Update sync failed", "Update both sides failed: left <-> right"},
            {Command::MoveToRight, "move", 0, "Move failed", "Cannot move to: right/a"},
            {Command::MoveTo, "move", 0, "Move failed", "Cannot move to: other/a"},
        };
        for (const auto &[command, call, journalCalls, title, text] : cases) {
            bool fails = false;
            int calls = 0;
            ActionsFixture f([&, command = command, call = call, journalCalls = journalCalls](int, QLatin1String name) {
                // What cannot be moved away is copied.
                if (fails && command == Command::DeleteForGood && name == QLatin1String("move"))
                    return FileError{FileErrorKind::OtherVolume, word("scripted")};
                return fails && name == QLatin1String(call) && ++calls == journalCalls + 1
                           ? FileError{FileErrorKind::Denied, word("scripted")}
                           : FileError();
            });
            f.make("left/a=1 other/");
            if (command == Command::MoveTo)
                f.answers.answerPath(f.files.path(word("other")));
            else if (command == Command::Rename || command == Command::NewFolder)
                f.answers.answerText(word("name"));
            else
                f.answers.answerNumber(1);
            fails = true;
            f.carryOut(command, command == Command::NewFolder ? FolderSelection{{}, Side::Left}
                                                              : f.select(lines("a"), std::nullopt));
            if (f.opened())
                f.click("planStart");
            QCOMPARE(f.askedTitle(), word(title));
            QCOMPARE(f.asked().section(u'\n', 0, 0), word(text));
            QVERIFY2(f.asked().contains(QLatin1String("scripted")), qPrintable(f.asked()));
            QCOMPARE(f.log().last(), word("Done: 0 succeeded, 1 failed"));
            QVERIFY(f.has("left/a=1"));
        }
    }

    void manyFailuresAreListed()
    {
        bool fails = false;
        int calls = 0;
        ActionsFixture f([&](int, QLatin1String name) {
            return fails && name == QLatin1String("createFile") && ++calls > 1 &&
                           calls < 5 // the others are the journal's
                       ? FileError{FileErrorKind::NoSpace, word("scripted")}
                       : FileError();
        });
        f.make("left/a=1 left/b=2 left/c=3");
        fails = true;
        f.carryOut(Command::CopyToRight, lines("a b c"));
        QVERIFY(f.opened());
        QCOMPARE(f.opened()->windowTitle(), word("Copy failed"));
        QCOMPARE(f.opened()->findChild<QLabel *>(word("resultsHeading"))->text(), word("Done: 0 succeeded, 3 failed"));
        QCOMPARE(f.rows(), lines("right/a right/b right/c"));
        QVERIFY(f.rows(1).first().startsWith(QLatin1String("The disk is full")));
        QVERIFY(f.log().first().startsWith(word("Cannot copy to: right/a — ")));
    }

    /// Files that change between the question and the answer are left alone.
    void whatHasChangedSinceIsLeftAlone()
    {
        ActionsFixture f;
        f.make("left/a=1 right/a=2 right/b=3 left/sub/x=1");
        f.carryOut(Command::MirrorToRight);
        f.files.make("right/a=edited-meanwhile");
        f.click("planStart");
        QVERIFY(f.has("right/a=edited-meanwhile"));
        QVERIFY(f.touched.contains(word("a")));
    }

    void withoutARecycleBinDeletingForGoodIsOffered()
    {
        bool fails = false;
        ActionsFixture f([&](int, QLatin1String name) {
            return fails && name == QLatin1String("recycle") ? FileError{FileErrorKind::Unsupported, word("scripted")}
                                                             : FileError();
        });
        f.make("left/keep=1 right/keep=1 right/a=1 right/sub/b=2");
        fails = true;
        f.carryOut(Command::MirrorToRight);
        f.answers.answerNumber(1);
        f.click("planStart");
        QVERIFY(f.asked().contains(QLatin1String("Delete them for good?")));
        QVERIFY(f.opened()); // the new plan is shown as well
        QVERIFY(f.rows(2).contains(word("for good from right")));
        f.click("planStart");
        QCOMPARE(f.picture("right"), word("keep=1"));
    }

    void aRunIsCancelledAndSaysSo()
    {
        FolderActions *running = nullptr;
        ActionsFixture f([&](int, QLatin1String name) {
            if (running && name == QLatin1String("createFile"))
                QMetaObject::invokeMethod(running, &FolderActions::cancel, Qt::BlockingQueuedConnection);
            return FileError();
        });
        f.make("left/a=1 left/b=2 left/c=3");
        running = &f.actions;
        f.carryOut(Command::CopyToRight, lines("a b c"));
        running = nullptr;
        QVERIFY2(f.status.startsWith(QLatin1String("Cancelled. Done: ")), qPrintable(f.status));
        for (const QString &entry : f.files.picture(word("right"))) // nothing half
            QVERIFY2(lines("a=1 b=2").contains(entry), qPrintable(entry));
    }

    void readOnlySidesSwitchCommandsOff()
    {
        ActionsFixture f;
        f.context.options.rightReadOnly = true;
        f.make("left/a=1 right/a=2 right/r=3");
        const FolderSelection pair = f.select(lines("a"));
        const QString reason = word("The right side is read-only");
        for (const Command command : {Command::CopyToRight, Command::MirrorToRight, Command::UpdateRight,
                                      Command::UpdateBoth, Command::Delete, Command::DeleteForGood, Command::Rename,
                                      Command::MoveTo, Command::MoveToRight, Command::MoveToLeft, Command::NewFolder})
            QCOMPARE(f.actions.whyNot(command, pair), reason);
        for (const Command command : {Command::CopyToLeft, Command::MirrorToLeft, Command::UpdateLeft, Command::CopyTo,
                                      Command::Properties, Command::ShowInFileManager})
            QCOMPARE(f.actions.whyNot(command, pair), QString());
        const FolderSelection left = f.select(lines("a"), Side::Left);
        for (const Command command : {Command::Delete, Command::Rename, Command::NewFolder, Command::MoveTo})
            QCOMPARE(f.actions.whyNot(command, left), QString());

        const QStringList before = f.files.picture();
        f.answers.answerNumber(1);
        f.carryOut(Command::Delete, pair);
        QCOMPARE(f.status, reason);
        QVERIFY(f.answers.asked().isEmpty() && !f.opened());
        QCOMPARE(f.files.picture(), before);

        // Nor does undoing write there.
        f.context.options.rightReadOnly = false;
        f.compare();
        f.carryOut(Command::CopyToRight, lines("a"));
        QVERIFY(f.has("right/a=1"));
        f.context.options.rightReadOnly = true;
        f.compare();
        f.carryOut(Command::UndoLast);
        QVERIFY(!f.opened());
        QVERIFY(f.has("right/a=1"));
    }

    void commandsSayWhyTheyCannot()
    {
        ActionsFixture f;
        f.make("left/a=1 left/b=1 right/r=3");
        const FolderSelection nothing;
        const FolderSelection left = f.select(lines("a"));
        const FolderSelection both = f.select(lines("a b"));
        QCOMPARE(f.actions.whyNot(Command::Delete, nothing), word("Nothing is selected"));
        QCOMPARE(f.actions.whyNot(Command::CopyToLeft, left), word("Nothing of the selection is on the right side"));
        QCOMPARE(f.actions.whyNot(Command::Delete, f.select(lines("a"), Side::Right)),
                 word("The selection is not on this side"));
        QCOMPARE(f.actions.whyNot(Command::Rename, both), word("Select one entry only"));
        QCOMPARE(f.actions.whyNot(Command::MirrorToLeft, nothing), QString());
        const MemoryTree tree;
        f.context.roots.right = tree.at();
        f.actions.setContext(f.context);
        QCOMPARE(f.actions.whyNot(Command::MirrorToRight, nothing),
                 word("The right side shows a fixed state, which cannot be changed"));
        f.context.roots.right = {};
        f.actions.setContext(f.context);
        QCOMPARE(f.actions.whyNot(Command::MirrorToLeft, nothing), word("Choose both folders first"));
        QCOMPARE(f.actions.whyNot(Command::Delete, left), QString());
    }

    void nothingToUndoAndUndoingThatFailsAreSaid()
    {
        bool fails = false;
        ActionsFixture f(
            [&fails](int, QLatin1String) { return fails ? throw std::runtime_error("broken") : FileError(); });
        f.make("left/a=1");
        f.carryOut(Command::UndoLast);
        QCOMPARE(f.status, word("There is nothing to undo"));
        QVERIFY(!f.opened());
        f.carryOut(Command::CopyToRight, lines("a"));
        QCOMPARE(f.actions.whyNot(Command::UndoLast, {}), QString());
        fails = true;
        f.carryOut(Command::UndoLast);
        QCOMPARE(f.status, QStringLiteral("The work ended unexpectedly: broken"));
        fails = false;
        f.carryOut(Command::UndoLast);
        QVERIFY2(f.opened(), qPrintable(f.status));
        // What the title says of a group is what stands below all of them.
        QCOMPARE(f.opened()->findChild<QLabel *>(word("planTotals"))->text(), f.rows()[0]);
        f.click("planStart");
        QCOMPARE(f.actions.whyNot(Command::UndoLast, {}), word("There is nothing to undo"));
    }

    void deletingForGoodMayKeepNothing()
    {
        bool isFull = false;
        ActionsFixture f([&isFull](int, QLatin1String call) {
            return isFull && call == QLatin1String("sink.write") ? FileError{FileErrorKind::NoSpace, {}} : FileError();
        });
        f.make("left/a=1 left/b=2 left/c=3 left/d=4");
        f.answers.answerNumber(2);
        f.carryOut(Command::DeleteForGood, lines("a"), Side::Left);
        QVERIFY2(f.asked().contains(QLatin1String("kept for up to 30 days")), qPrintable(f.asked()));
        QVERIFY(f.log().contains(word("not kept for undoing: 1")));

        f.carryOut(Command::DeleteForGood, lines("b c"), Side::Left);
        f.opened()->findChild<QAbstractButton *>(word("planOffer"))->setChecked(true);
        f.click("planStart");
        QVERIFY(f.log().contains(word("not kept for undoing: 2")));
        QVERIFY(f.files.picture("journal").filter(word("kept/1")).isEmpty());

        // A full disk does not stop who asks again.
        isFull = true;
        f.compare();
        f.answers.answerNumber(1);
        f.carryOut(Command::DeleteForGood, lines("d"), Side::Left);
        const auto &asked = f.answers.asked();
        QVERIFY(asked[asked.size() - 2].text.contains(QLatin1String("Go on without it?"))); // then what went wrong
        QVERIFY(f.has("left/d=4"));
        f.answers.answerNumber(1);
        f.answers.answerNumber(1);
        f.carryOut(Command::DeleteForGood, lines("d"), Side::Left);
        QCOMPARE(f.picture("left"), QString());
    }

    void aReadOnlyTargetIsMarkedBeforeItIsReplaced()
    {
        ActionsFixture f;
        f.make("right/a=old left/a=new");
        QVERIFY(QFile::setPermissions(f.files.path("right/a"), QFile::ReadOwner | QFile::ReadGroup));
        f.answers.answerNumber(2);
        f.carryOut(Command::CopyToRight, lines("a"));
        QCOMPARE(f.asked(), word("A read-only file will be replaced.\n\nRight side: right/a"));
        QVERIFY(f.rows(2).contains(word("to right, over a read-only file")));
        f.click("planCancel");
        QVERIFY(f.has("right/a=old"));
    }

    void alignedEntriesGoByTheirComparedNames()
    {
        ActionsFixture f;
        f.context.options.alignOverrides = {{word("*.c"), word("*.cpp")}};
        f.make("right/a.cpp=2 left/a.c=1");
        f.carryOut(Command::CopyToRight, lines("a.c"));
        QCOMPARE(f.log().first(), word("copy: left/a.c -> right/a.cpp"));
        QCOMPARE(f.touched, lines("a.c"));
        QCOMPARE(f.picture("right"), word("a.cpp=1"));
    }
};

VELMORA_TEST(FolderActionsTest)
#include "folder_actions_test.moc"
