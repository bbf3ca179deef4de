#pragma once

#include <QDialog>
#include <QList>
#include <QStringList>

class QLabel;
class QLineEdit;

namespace velmora {

/// How the masks of a dialog are understood.
enum class MaskSyntax {
    Bracketed, ///< as filters have it: "*", "?" and "[…]"
    Plain,     ///< as alignments have it: "*" and "?", a bracket is a bracket
};

/// What is wrong with a mask for bare names, in words, or an empty text. An empty mask has nothing wrong.
[[nodiscard]] QString maskProblem(const QString &mask, MaskSyntax syntax);

/// Asks for one or more masks that belong together. Says at once what is wrong with what is typed and takes only what
/// is right. Opened with open(); the result counts when `accepted` comes.
class MaskDialog final : public QDialog {
    Q_OBJECT
public:
    struct Field {
        QString label;
        QString name; ///< of the line, for tests
        QString value;
    };

    MaskDialog(const QString &title, MaskSyntax syntax, const QList<Field> &fields, QWidget *parent);

    /// Trimmed, in the order of the fields, none of them empty.
    [[nodiscard]] QStringList masks() const;

private:
    void judge();

    MaskSyntax m_syntax;
    QList<QLineEdit *> m_lines;
    QLabel *m_verdict;
};

} // namespace velmora
