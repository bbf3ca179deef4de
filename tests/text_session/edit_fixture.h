#pragma once

#include "session_fixture.h"

#include <optional>

namespace velmora::test {

/// A session that compares two files and shows them, unlocked.
class EditFixture : public SessionFixture {
public:
    EditFixture(const QByteArray &leftBytes, const QByteArray &rightBytes, RecoveryStore *store = nullptr)
        : SessionFixture(store), left(file("left.txt", leftBytes)), right(file("right.txt", rightBytes))
    {
        compare(left, right);
        session.show();
        session.setEditingEnabled(true);
    }

    /// Saves a side and waits for the end, however it ends.
    void save(Side side)
    {
        if (side == Side::Left)
            session.onSaveLeft();
        else
            session.onSaveRight();
        waitForSave();
    }
    void waitForSave()
    {
        QVERIFY(QTest::qWaitFor([this] { return !session.isSaving(); }, 60000));
    }

    /// Types at the start of a line, which is counted from 1.
    void typeAt(Side side, qint32 line, const QString &text)
    {
        put(side, {std::max<qsizetype>(scene().document()->rowOfLine(side, line), 0), 0});
        QTest::keyClicks(&pane(side), text);
    }

    /// What `confirmClose` answers; empty while it has not.
    std::optional<bool> closeAnswer;
    void confirmClose()
    {
        closeAnswer.reset();
        session.confirmClose([this](bool mayClose) { closeAnswer = mayClose; });
    }

    void put(Side side, TextPosition from, TextPosition to) { scene().setCaret({side, from, to}); }
    void put(Side side, TextPosition at) { put(side, at, at); }

    /// Presses keys in a pane, as in "Ctrl+X|Return".
    void press(Side side, const char *keys)
    {
        for (const QString &key : words(keys)) {
            const QKeyCombination pressed = QKeySequence(key)[0];
            QTest::keyClick(&pane(side), pressed.key(), pressed.keyboardModifiers());
        }
    }

    /// The rows as a picture, "kind left|right" of each between commas.
    [[nodiscard]] QString picture() { return rows().join(u','); }
    [[nodiscard]] QStringList rows()
    {
        QStringList rows;
        const DiffDocument &document = *session.view().document();
        for (qsizetype row = 0; row < document.rowCount(); ++row) {
            const auto cell = [&](Side side) {
                return document.lineNumber(row, side) >= 1 ? document.text(row, side) : QStringLiteral("-");
            };
            rows.append(QStringLiteral("=+-~").at(document.kind(row)) + cell(Side::Left) + u'|' + cell(Side::Right));
        }
        return rows;
    }

    QString left;
    QString right;
};

} // namespace velmora::test
