#include "settings/dialogs/folder_other_filters_page.h"

#include "session/translate.h"
#include "settings/dialogs/folder_format_dialog.h"
#include "settings/dialogs/folder_formats_model.h"
#include "settings/dialogs/mask_dialog.h"
#include "settings/dialogs/rule_list_editor.h"
#include "settings/options/folder_session_options.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace velmora {

namespace {

QTableView *makeFormatTable()
{
    auto *table = new QTableView;
    table->setObjectName(QStringLiteral("fileFormats"));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setToolTip(Velmora::tr("While any format is checked, only files of checked formats are shown, beside those "
                                  "that the include masks name"));
    table->setShowGrid(false);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

} // namespace

FolderOtherFiltersPage::FolderOtherFiltersPage(QWidget *parent)
    : FolderSettingsPage(parent),
      m_exclusions(new MaskListModel(this)),
      m_excludeOsFiles(new QCheckBox(Velmora::tr("Exclude protected OS files (recommended) (&Y)"))),
      m_showHidden(new QCheckBox(Velmora::tr("Show hidden files and folders (&H)"))),
      m_formats(new FileFormatsModel(this))
{
    m_excludeOsFiles->setObjectName(QStringLiteral("excludeOsFiles"));
    m_excludeOsFiles->setToolTip(Velmora::tr("Files that carry the system attribute are not shown"));
    m_showHidden->setObjectName(QStringLiteral("showHidden"));
    m_showHidden->setToolTip(Velmora::tr("Hidden entries are compared, copied and deleted like all others"));
    auto *column = new QVBoxLayout(this);
    column->addWidget(makeExclusions(), 2);
    column->addWidget(m_excludeOsFiles);
    column->addWidget(m_showHidden);
    column->addSpacing(6);
    column->addWidget(makeFormats(), 3);
    for (const QAbstractItemModel *model :
         {static_cast<QAbstractItemModel *>(m_exclusions), static_cast<QAbstractItemModel *>(m_formats)}) {
        connect(model, &QAbstractItemModel::dataChanged, this, &SettingsPageBase::changed);
        connect(model, &QAbstractItemModel::rowsInserted, this, &SettingsPageBase::changed);
        connect(model, &QAbstractItemModel::rowsRemoved, this, &SettingsPageBase::changed);
    }
    for (const QCheckBox *box : {m_excludeOsFiles, m_showHidden})
        connect(box, &QCheckBox::toggled, this, &SettingsPageBase::changed);
}

void FolderOtherFiltersPage::load(const FolderSessionOptions &options)
{
    m_exclusions->setRules(options.otherExclude);
    m_excludeOsFiles->setChecked(options.excludeOsFiles);
    m_showHidden->setChecked(options.showHidden);
    m_formats->setGroups(options.fileFormats);
}

void FolderOtherFiltersPage::store(FolderSessionOptions &options) const
{
    options.otherExclude = m_exclusions->rules();
    options.excludeOsFiles = m_excludeOsFiles->isChecked();
    options.showHidden = m_showHidden->isChecked();
    options.fileFormats = m_formats->groups();
}

QWidget *FolderOtherFiltersPage::makeExclusions()
{
    m_editor = new RuleListEditor(*m_exclusions, QStringLiteral("otherExclude"),
                                  {Velmora::tr("Files whose name matches the mask are not shown (Ins)"),
                                   Velmora::tr("Edit the selected exclusion rule (F2)"),
                                   Velmora::tr("Delete selected rules")});
    m_editor->setButtonTexts(Velmora::tr("Add exclusion rule"), Velmora::tr("Delete selected rules"));
    m_editor->allowManySelected();
    connect(m_editor, &RuleListEditor::addRequested, this, [this] {
        askForRule({}, [this](const QString &rule) {
            m_exclusions->append(rule);
            m_editor->selectRow(m_exclusions->rowCount() - 1);
        });
    });
    connect(m_editor, &RuleListEditor::editRequested, this, [this](int row) {
        askForRule(m_exclusions->rule(row), [this, row](const QString &rule) { m_exclusions->setRule(row, rule); });
    });

    auto *part = new QWidget;
    auto *column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    auto *label = new QLabel(Velmora::tr("Exclusion rules (&X):"));
    label->setBuddy(&m_editor->list());
    column->addWidget(label);
    column->addWidget(m_editor);
    return part;
}

QWidget *FolderOtherFiltersPage::makeFormats()
{
    QTableView *table = makeFormatTable();
    m_formatEditor = new RuleListEditor(table, *m_formats, QStringLiteral("fileFormats"),
                                        {Velmora::tr("Add a file format (Ins)"),
                                         Velmora::tr("Edit the name and the masks of the selected format (F2)"),
                                         Velmora::tr("Remove the selected format (Del)")});
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    auto *restore = new QPushButton(Velmora::tr("Add missing defaults"));
    restore->setObjectName(QStringLiteral("fileFormatsRestore"));
    restore->setToolTip(Velmora::tr("Brings back the formats that every comparison begins with"));
    m_formatEditor->addButton(restore);
    const auto judge = [this, restore] { restore->setEnabled(!m_formats->missingDefaults().isEmpty()); };
    connect(m_formats, &QAbstractItemModel::rowsInserted, restore, judge);
    connect(m_formats, &QAbstractItemModel::rowsRemoved, restore, judge);
    connect(m_formats, &QAbstractItemModel::dataChanged, restore, judge);
    connect(m_formats, &QAbstractItemModel::modelReset, restore, judge);
    connect(restore, &QPushButton::clicked, this, [this] { m_formats->append(m_formats->missingDefaults()); });
    connect(m_formatEditor, &RuleListEditor::addRequested, this, &FolderOtherFiltersPage::addFormat);
    connect(m_formatEditor, &RuleListEditor::editRequested, this, &FolderOtherFiltersPage::editFormat);

    auto *part = new QWidget;
    auto *column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    auto *label = new QLabel(Velmora::tr("Enabled file formats (&F):"));
    label->setBuddy(&m_formatEditor->list());
    column->addWidget(label);
    column->addWidget(m_formatEditor);
    return part;
}

void FolderOtherFiltersPage::askForRule(const QString &rule, std::function<void(const QString &)> take)
{
    const QList<MaskDialog::Field> fields{{Velmora::tr("File mask:"), QStringLiteral("exclusionMask"), rule}};
    auto *dialog = new MaskDialog(Velmora::tr("Exclusion rule"), MaskSyntax::Bracketed, fields, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [dialog, take = std::move(take)] { take(dialog->masks().first()); });
    dialog->open();
}

void FolderOtherFiltersPage::addFormat()
{
    askForFormat({}, -1, [this](const FileFormatGroup &group) {
        m_formats->append({group});
        m_formatEditor->selectRow(m_formats->rowCount() - 1);
    });
}

void FolderOtherFiltersPage::editFormat(int row)
{
    askForFormat(m_formats->groups().at(row), row,
                 [this, row](const FileFormatGroup &group) { m_formats->setGroup(row, group); });
}

void FolderOtherFiltersPage::askForFormat(const FileFormatGroup &group, int row,
                                          std::function<void(const FileFormatGroup &)> take)
{
    auto *dialog = new FolderFormatDialog(group, m_formats->namesBut(row), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [dialog, take = std::move(take)] { take(dialog->group()); });
    dialog->open();
}

} // namespace velmora
