#pragma once

#include "folder/compare/folder_compare_widget.h"
#include "folder/compare/folder_view.h"
#include "folder/compare/tree_line_tree_widget.h"
#include "folder_engine/test_tree.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"

#include <QTest>

namespace velmora::test {

/// A folder session on two folders of its own, with scripted answers.
class FolderSessionFixture {
public:
    FolderSessionFixture() { session.resize(1100, 700); }

    void compare()
    {
        session.setPaths({disk.left(), disk.right(), {}});
        session.start();
        wait();
    }

    void wait() { QTRY_VERIFY_WITH_TIMEOUT(!session.isComparing(), 60000); }

    /// The rows as a person sees them: left name, sign, right name.
    [[nodiscard]] QStringList rows()
    {
        QStringList lines;
        const FolderRowsModel &model = session.view().rows();
        for (int row = 0; row < model.rowCount(); ++row) {
            const auto text = [&](FolderColumn column) {
                return model.data(model.index(row, int(column)), Qt::DisplayRole).toString();
            };
            lines.append(text(FolderColumn::LeftName) + u' ' + text(FolderColumn::Sign) + u' ' +
                         text(FolderColumn::RightName));
        }
        return lines;
    }

    /// Makes the row of an entry the current one.
    void goTo(const QString &name)
    {
        const qint32 node = session.comparison().tree().find(name);
        if (node < 0)
            qFatal("no entry %s", qPrintable(name));
        session.view().goToNode(node);
    }

    [[nodiscard]] QString current()
    {
        const qint32 node = session.view().currentNode();
        return node < 0 ? QString() : session.comparison().tree().item(node).name;
    }

    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&session.view().activePane(), Qt::Key(key), modifiers);
    }

    [[nodiscard]] QAction *action(const char *name)
    {
        auto *action = session.findChild<QAction *>(QLatin1String(name));
        if (!action)
            qFatal("no action %s", name);
        return action;
    }

    TestTree disk;
    ScriptedDialogs dialogs;
    RecordingHost host;
    FolderCompareWidget session{host};
};

/// With files that are the same, differ and are on one side only, compared.
class Filled : public FolderSessionFixture {
public:
    Filled()
    {
        disk.file(QStringLiteral("left/src/main.cpp"), "one", 1);
        disk.file(QStringLiteral("right/src/main.cpp"), "two", 2);
        disk.file(QStringLiteral("left/src/same.h"), "same");
        disk.file(QStringLiteral("right/src/same.h"), "same", 3);
        disk.file(QStringLiteral("left/docs/guide.txt"), "text");
        disk.file(QStringLiteral("right/docs/guide.txt"), "text", 3);
        disk.file(QStringLiteral("left/file10"), "10");
        disk.file(QStringLiteral("right/file9"), "9");
        compare();
    }
};

} // namespace velmora::test
