#include "settings/dialogs/importance_page.h"

#include "session/dialogs.h"
#include "session/translate.h"
#include "settings/dialogs/grammar_boxes.h"
#include "settings/dialogs/grammar_dialog.h"
#include "settings/dialogs/rule_list_editor.h"
#include "settings/dialogs/unimportant_text_dialog.h"
#include "settings/options/text_importance_file.h"
#include "settings/options/text_presets.h"
#include "settings/options/text_session_options.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QStringListModel>
#include <QVBoxLayout>

namespace velmora {

namespace {

QPushButton *makeButton(const QString &text, const QString &name, const QString &toolTip)
{
    auto *button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

QString fileFilter()
{
    return Velmora::tr("Text importance rules (*.json);;All files (*.*)");
}

/// What a person is told about an import that failed.
QString importFailure(const ImportanceFileError &error, const QString &path)
{
    switch (error.kind) {
    case ImportanceFileError::Kind::Unreadable:
        return Velmora::tr("Cannot read file: %1").arg(QDir::toNativeSeparators(path));
    case ImportanceFileError::Kind::InvalidJson:
        return Velmora::tr("Invalid JSON: %1").arg(error.detail);
    case ImportanceFileError::Kind::OtherSchema:
        return Velmora::tr("Unrecognized importance rules file (expected schema %1).")
            .arg(QLatin1String(textImportanceSchema));
    default:
        return Velmora::tr("The file holds no importance rules.");
    }
}

/// The lines of a text that hold something: a rule of blanks would never be looked for.
QStringList rulesOf(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    QStringList rules = text.split(u'\n');
    rules.removeIf([](const QString &rule) { return rule.trimmed().isEmpty(); });
    return rules;
}

} // namespace

ImportancePage::ImportancePage(QWidget *parent)
    : SettingsPage(parent),
      m_grammar(new GrammarBoxes),
      m_orphans(new QCheckBox(Velmora::tr("&Orphan lines are always important"))),
      m_lineEndings(new QCheckBox(Velmora::tr("Compare line endings (PC/&Mac/Unix)"))),
      m_blankLines(new QCheckBox(Velmora::tr("Ignore &blank lines"))),
      m_unimportant(new QStringListModel(this)),
      m_unimportantEditor(new RuleListEditor(*m_unimportant, QStringLiteral("unimportant"),
                                             {Velmora::tr("Add an unimportant text rule"),
                                              Velmora::tr("Edit selected unimportant text rule"),
                                              Velmora::tr("Remove selected unimportant text rule")}))
{
    m_orphans->setObjectName(QStringLiteral("orphanLinesAlwaysImportant"));
    m_lineEndings->setObjectName(QStringLiteral("compareLineEndings"));
    m_blankLines->setObjectName(QStringLiteral("ignoreBlankLines"));
    m_blankLines->setToolTip(Velmora::tr("Skip lines that are entirely blank"));
    m_unimportantEditor->list().setMinimumHeight(5 * fontMetrics().lineSpacing());
    m_unimportantEditor->addButton(makeClipboardButton());
    auto *unimportantLabel = new QLabel(Velmora::tr("&Unimportant text:"));
    unimportantLabel->setBuddy(&m_unimportantEditor->list());

    auto *grammarLine = new QHBoxLayout;
    grammarLine->addWidget(m_grammar, 1);
    grammarLine->addWidget(makeGrammarButton(), 0, Qt::AlignBottom);
    auto *column = new QVBoxLayout(this);
    column->addLayout(makeSources());
    column->addSpacing(6);
    column->addLayout(grammarLine);
    column->addSpacing(6);
    for (QCheckBox *box : {m_orphans, m_lineEndings, m_blankLines}) {
        column->addWidget(box);
        connect(box, &QCheckBox::toggled, this, &SettingsPage::changed);
    }
    column->addSpacing(6);
    column->addWidget(unimportantLabel);
    column->addWidget(m_unimportantEditor, 1);

    connect(m_grammar, &GrammarBoxes::changed, this, &SettingsPage::changed);
    connect(m_unimportantEditor, &RuleListEditor::addRequested, this, &ImportancePage::addUnimportant);
    connect(m_unimportantEditor, &RuleListEditor::editRequested, this, &ImportancePage::editUnimportant);
    connect(m_unimportant, &QAbstractItemModel::dataChanged, this, &SettingsPage::changed);
    connect(m_unimportant, &QAbstractItemModel::rowsRemoved, this, &SettingsPage::changed);
    connect(m_unimportant, &QAbstractItemModel::modelReset, this, &SettingsPage::changed);
}

void ImportancePage::load(const TextSessionOptions &options)
{
    m_grammar->load(options);
    m_orphans->setChecked(options.orphanLinesAlwaysImportant);
    m_lineEndings->setChecked(options.compareLineEndings);
    m_blankLines->setChecked(options.ignoreBlankLines);
    m_unimportant->setStringList(options.unimportantText);
}

void ImportancePage::store(TextSessionOptions &options) const
{
    m_grammar->store(options);
    options.orphanLinesAlwaysImportant = m_orphans->isChecked();
    options.compareLineEndings = m_lineEndings->isChecked();
    options.ignoreBlankLines = m_blankLines->isChecked();
    options.unimportantText = m_unimportant->stringList();
}

QPushButton *ImportancePage::makePresetButton()
{
    auto *button = makeButton(Velmora::tr("Apply comparison &preset…"), QStringLiteral("applyPreset"),
                              Velmora::tr("Load a built-in text comparison preset"));
    auto *menu = new QMenu(button);
    menu->setToolTipsVisible(true);
    for (const TextPreset &preset : textPresets()) {
        const QString name = QLatin1String(preset.name);
        QAction *action = menu->addAction(Velmora::tr(preset.menuText));
        action->setObjectName(name);
        action->setToolTip(Velmora::tr("Apply built-in text comparison rules"));
        connect(action, &QAction::triggered, this, [this, name] { Q_EMIT presetChosen(name); });
    }
    button->setMenu(menu);
    return button;
}

QPushButton *ImportancePage::makeGrammarButton()
{
    auto *button = makeButton(Velmora::tr("Edit &Grammar..."), QStringLiteral("editGrammar"),
                              Velmora::tr("Open grammar importance editor"));
    connect(button, &QPushButton::clicked, this, &ImportancePage::editGrammar);
    return button;
}

QPushButton *ImportancePage::makeClipboardButton()
{
    auto *button = makeButton(Velmora::tr("Clipboar&d"), QStringLiteral("unimportantClipboard"),
                              Velmora::tr("Copy unimportant text list to clipboard / paste from clipboard"));
    auto *menu = new QMenu(button);
    QAction *copy = menu->addAction(Velmora::tr("&Copy list"), this, &ImportancePage::copyUnimportant);
    copy->setObjectName(QStringLiteral("copyUnimportant"));
    QAction *paste = menu->addAction(Velmora::tr("&Paste list"), this, &ImportancePage::pasteUnimportant);
    paste->setObjectName(QStringLiteral("pasteUnimportant"));
    connect(menu, &QMenu::aboutToShow, this, [this, copy, paste] {
        copy->setEnabled(m_unimportant->rowCount() > 0);
        paste->setEnabled(!rulesOf(QGuiApplication::clipboard()->text()).isEmpty());
    });
    button->setMenu(menu);
    return button;
}

QLayout *ImportancePage::makeSources()
{
    auto *importButton = makeButton(Velmora::tr("&Import from file..."), QStringLiteral("importRules"),
                                    Velmora::tr("Load grammar and unimportant-text rules from a JSON file"));
    auto *exportButton = makeButton(Velmora::tr("E&xport to file..."), QStringLiteral("exportRules"),
                                    Velmora::tr("Save grammar and unimportant-text rules to a JSON file"));
    connect(importButton, &QPushButton::clicked, this, &ImportancePage::importRules);
    connect(exportButton, &QPushButton::clicked, this, &ImportancePage::exportRules);
    auto *line = new QHBoxLayout;
    line->addWidget(makePresetButton());
    line->addStretch(1);
    line->addWidget(importButton);
    line->addWidget(exportButton);
    return line;
}

void ImportancePage::editGrammar()
{
    TextSessionOptions options;
    m_grammar->store(options);
    auto *dialog = new GrammarDialog(options, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        TextSessionOptions edited;
        dialog->store(edited);
        m_grammar->load(edited);
    });
    dialog->open();
}

void ImportancePage::addUnimportant()
{
    auto *dialog = new UnimportantTextDialog({}, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        const int row = m_unimportant->rowCount();
        m_unimportant->insertRow(row);
        m_unimportant->setData(m_unimportant->index(row), dialog->text());
        m_unimportantEditor->selectRow(row);
    });
    dialog->open();
}

void ImportancePage::editUnimportant(int row)
{
    auto *dialog = new UnimportantTextDialog(m_unimportant->stringList().value(row), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this,
            [this, dialog, row] { m_unimportant->setData(m_unimportant->index(row), dialog->text()); });
    dialog->open();
}

void ImportancePage::copyUnimportant()
{
    QGuiApplication::clipboard()->setText(m_unimportant->stringList().join(u'\n'));
}

void ImportancePage::pasteUnimportant()
{
    // What is pasted is what was there when the question was asked.
    const QStringList rules = rulesOf(QGuiApplication::clipboard()->text());
    Dialogs::instance().askYesNo(this, Velmora::tr("Unimportant text"),
                                 Velmora::tr("Replace the list with text from the clipboard?"), true,
                                 [this, rules](bool yes) {
                                     if (yes)
                                         m_unimportant->setStringList(rules);
                                 });
}

void ImportancePage::importRules()
{
    Dialogs::instance().openFile(
        this, Velmora::tr("Import importance rules"), {}, fileFilter(), [this](const QString &path) {
            TextSessionOptions options;
            store(options);
            const ImportanceFileError error = importImportanceRules(path, options);
            if (error.ok())
                load(options);
            else
                Dialogs::instance().tell(this, Dialogs::Tone::Warning, Velmora::tr("Import failed"),
                                         importFailure(error, path));
        });
}

void ImportancePage::exportRules()
{
    Dialogs::instance().saveFile(this, Velmora::tr("Export importance rules"), QStringLiteral("text-importance.json"),
                                 fileFilter(), [this](const QString &path) {
                                     TextSessionOptions options;
                                     store(options);
                                     if (!exportImportanceRules(path, options).ok())
                                         Dialogs::instance().tell(
                                             this, Dialogs::Tone::Warning, Velmora::tr("Export failed"),
                                             Velmora::tr("Cannot write file: %1").arg(QDir::toNativeSeparators(path)));
                                 });
}

} // namespace velmora
