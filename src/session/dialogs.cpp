#include "session/dialogs.h"

#include "core/path_names.h"
#include "session/translate.h"

#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>

#include <utility>

namespace velmora {

namespace {

Dialogs *installed = nullptr;

constexpr int textQuestionWidth = 420; // for names of files as they usually are

QMessageBox::Icon iconFor(Dialogs::Tone tone)
{
    switch (tone) {
    case Dialogs::Tone::Information:
        return QMessageBox::Information;
    case Dialogs::Tone::Warning:
        return QMessageBox::Warning;
    case Dialogs::Tone::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

/// The folder chosen last in this run, at first the one for documents: where the program was started means nothing.
QString &usualFolder()
{
    static QString folder;
    if (!QFileInfo(folder).isDir())
        folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!QFileInfo(folder).isDir())
        folder = QDir::homePath();
    return folder;
}

void askForPath(QWidget *parent, const QString &title, const QString &start, Dialogs::PathAnswer chosen,
                const std::function<void(QFileDialog &)> &prepare)
{
    auto *dialog = new QFileDialog(parent, title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    const QFileInfo info(start);
    const bool isFolder = info.isDir();
    if (isFolder)
        dialog->setDirectory(start);
    else
        dialog->setDirectory(start.contains(u'/') ? info.absolutePath() : usualFolder());
    if (!isFolder && !start.isEmpty())
        dialog->selectFile(info.fileName());
    prepare(*dialog);
    QObject::connect(dialog, &QFileDialog::fileSelected, parent, [chosen = std::move(chosen)](const QString &path) {
        usualFolder() = QFileInfo(path).absolutePath();
        chosen(path);
    });
    dialog->open();
}

/// Not opened yet.
QInputDialog *textQuestion(QWidget *parent, const QString &title, const QString &label, Dialogs::TextAnswer answered)
{
    auto *dialog = new QInputDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    dialog->setLabelText(label);
    dialog->setInputMode(QInputDialog::TextInput);
    dialog->resize(textQuestionWidth, dialog->sizeHint().height());
    QObject::connect(dialog, &QInputDialog::textValueSelected, parent, std::move(answered));
    return dialog;
}

} // namespace

QString besideFile(const QString &path, const QString &name)
{
    return joinedPath(parentPath(QDir::fromNativeSeparators(path)), name);
}

Dialogs::~Dialogs() = default;

Dialogs &Dialogs::instance()
{
    static Dialogs windows;
    return installed ? *installed : windows;
}

void Dialogs::install(Dialogs *dialogs)
{
    installed = dialogs;
}

void Dialogs::tell(QWidget *parent, Tone tone, const QString &title, const QString &text, std::function<void()> closed)
{
    auto *box = new QMessageBox(iconFor(tone), title, text, QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText); // a file may be called "<b>"
    box->setAttribute(Qt::WA_DeleteOnClose);
    if (closed)
        QObject::connect(box, &QDialog::finished, parent, [closed = std::move(closed)] { closed(); });
    box->open();
}

void Dialogs::ask(QWidget *parent, Tone tone, const QString &title, const QString &text, const QList<Choice> &choices,
                  ChoiceAnswer answered)
{
    auto *box = new QMessageBox(iconFor(tone), title, text, QMessageBox::NoButton, parent);
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QHash<QAbstractButton *, int> answers;
    int escape = 0;
    for (const Choice &choice : choices) {
        auto *button = box->addButton(choice.text, choice.isEscape ? QMessageBox::RejectRole : QMessageBox::AcceptRole);
        answers.insert(button, choice.answer);
        if (choice.isDefault)
            box->setDefaultButton(button);
        if (choice.isEscape) {
            box->setEscapeButton(button);
            escape = choice.answer;
        }
    }
    QObject::connect(box, &QDialog::finished, parent, [box, answers, escape, answered = std::move(answered)] {
        answered(answers.value(box->clickedButton(), escape));
    });
    box->open();
}

void Dialogs::askYesNo(QWidget *parent, const QString &title, const QString &text, bool yesIsDefault,
                       YesNoAnswer answered)
{
    ask(parent, Tone::Information, title, text,
        {{Velmora::tr("&Yes"), 1, yesIsDefault, false}, {Velmora::tr("&No"), 0, !yesIsDefault, true}},
        [answered = std::move(answered)](int answer) { answered(answer == 1); });
}

void Dialogs::openFile(QWidget *parent, const QString &title, const QString &start, const QString &filter,
                       PathAnswer chosen)
{
    askForPath(parent, title, start, std::move(chosen), [&filter](QFileDialog &dialog) {
        dialog.setFileMode(QFileDialog::ExistingFile);
        if (!filter.isEmpty())
            dialog.setNameFilters(filter.split(QStringLiteral(";;")));
    });
}

void Dialogs::openFolder(QWidget *parent, const QString &title, const QString &start, PathAnswer chosen)
{
    askForPath(parent, title, start, std::move(chosen), [](QFileDialog &dialog) {
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
    });
}

void Dialogs::saveFile(QWidget *parent, const QString &title, const QString &start, const QString &filter,
                       PathAnswer chosen)
{
    askForPath(parent, title, start, std::move(chosen), [&filter](QFileDialog &dialog) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        if (!filter.isEmpty())
            dialog.setNameFilters(filter.split(QStringLiteral(";;")));
    });
}

void Dialogs::askNumber(QWidget *parent, const QString &title, const QString &label, int value, int minimum,
                        int maximum, NumberAnswer answered)
{
    auto *dialog = new QInputDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    dialog->setLabelText(label);
    dialog->setInputMode(QInputDialog::IntInput);
    dialog->setIntRange(minimum, maximum);
    dialog->setIntValue(value);
    QObject::connect(dialog, &QInputDialog::intValueSelected, parent, std::move(answered));
    dialog->open();
}

void Dialogs::askText(QWidget *parent, const QString &title, const QString &label, const QString &value,
                      TextAnswer answered)
{
    QInputDialog *dialog = textQuestion(parent, title, label, std::move(answered));
    dialog->setTextValue(value);
    dialog->open();
}

void Dialogs::askPassword(QWidget *parent, const QString &title, const QString &label, TextAnswer answered)
{
    QInputDialog *dialog = textQuestion(parent, title, label, std::move(answered));
    dialog->setTextEchoMode(QLineEdit::Password);
    dialog->open();
}

} // namespace velmora
