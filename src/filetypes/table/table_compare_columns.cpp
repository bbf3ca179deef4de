// What is chosen about the columns of a table comparison, and how that is kept.

#include "filetypes/table/columns_dialog.h"
#include "filetypes/table/row_card.h"
#include "filetypes/table/table_compare_bar.h"
#include "filetypes/table/table_compare_widget.h"
#include "filetypes/table/table_grids.h"
#include "filetypes/table/table_inputs_bar.h"
#include "filetypes/table/table_scene.h"
#include "session/translate.h"

#include <QAction>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLocale>
#include <QMenu>

#include <algorithm>

namespace velmora {

namespace {

constexpr QLatin1String delimiterKey("delimiter");
constexpr QLatin1String headerKey("header");
constexpr QLatin1String columnsByNameKey("columnsByName");
constexpr QLatin1String keyKey("key");
constexpr QLatin1String keyNameKey("keyName");
constexpr QLatin1String keysKey("keys");
constexpr QLatin1String columnsKey("columns");
constexpr QLatin1String cardKey("card");
constexpr QLatin1String columnKey("column");
constexpr QLatin1String nameKey("name");

QList<ColumnRef> keysFromJson(const QJsonObject &options)
{
    QList<ColumnRef> keys;
    for (const QJsonValue &value : options.value(keysKey).toArray()) {
        const QJsonObject key = value.toObject();
        keys.append({key.value(columnKey).toInt(-1), key.value(nameKey).toString()});
    }
    if (keys.isEmpty() && options.value(keyKey).toInt(-1) >= 0)
        keys.append({options.value(keyKey).toInt(), options.value(keyNameKey).toString()});
    return keys;
}

} // namespace

QJsonObject TableCompareWidget::options() const
{
    QJsonObject options{{delimiterKey, QString(m_choices->delimiter())}, {headerKey, m_choices->hasHeader()}};
    if (m_bar->columnsByName->isChecked())
        options.insert(columnsByNameKey, true);
    const QList<ColumnRef> keys = m_choices->keys();
    if (keys.size() == 1) {
        options.insert(keyKey, keys.first().column);
        options.insert(keyNameKey, m_choices->keyNames().first());
    } else if (!keys.isEmpty()) {
        QJsonArray json;
        for (const ColumnRef &key : keys)
            json.append(QJsonObject{{columnKey, key.column}, {nameKey, key.name}});
        options.insert(keysKey, json);
    }
    if (!m_columns.isEmpty())
        options.insert(columnsKey, columnsToJson(m_columns));
    if (m_bar->showCard->isChecked())
        options.insert(cardKey, m_card->order());
    return options;
}

void TableCompareWidget::setOptions(const QJsonObject &options)
{
    if (const QString delimiter = options.value(delimiterKey).toString(); delimiter.size() == 1)
        m_choices->setDelimiter(delimiter[0]);
    m_choices->setHasHeader(options.value(headerKey).toBool(m_choices->hasHeader()));
    m_bar->columnsByName->setChecked(options.value(columnsByNameKey).toBool());
    if (const QList<ColumnRef> keys = keysFromJson(options); !keys.isEmpty())
        m_choices->setKeys(keys);
    m_columns = columnsFromJson(options.value(columnsKey).toArray());
    if (options.contains(cardKey)) {
        m_card->setOrder(options.value(cardKey).toInt());
        m_bar->showCard->setChecked(true);
    }
}

void TableCompareWidget::openColumns()
{
    const std::shared_ptr<const TableDocument> document = m_scene->document();
    if (!document)
        return;
    auto *dialog = new ColumnsDialog(document, {m_bar->columnsByName->isChecked(), document->keys, m_columns},
                                     m_choices->hasHeader(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] { takeColumns(dialog->settings()); });
    dialog->open();
}

void TableCompareWidget::takeColumns(const TableColumnSettings &settings)
{
    const std::shared_ptr<const TableDocument> document = m_scene->document();
    const TableColumns &columns = document->alignment.columns;
    const bool isOther = settings.byName != m_bar->columnsByName->isChecked() || settings.keys != document->keys ||
                         rulesOf(settings.choices, columns) != rulesOf(m_columns, columns);
    m_columns = settings.choices;
    m_bar->columnsByName->setChecked(settings.byName);
    if (settings.keys != document->keys)
        m_choices->setKeys(settings.keys);
    arrangeColumns();
    if (isOther)
        start();
}

void TableCompareWidget::arrangeColumns()
{
    m_scene->setArrangement(arrangementOf(m_columns, m_scene->document()->alignment.columns, TableScene::columnLimit));
    showColumnFacts();
}

void TableCompareWidget::showColumnFacts()
{
    const TableDocument &document = *m_scene->document();
    QStringList facts;
    if (const qint32 hidden = m_scene->columnCount() - m_scene->columnPlaces(); hidden > 0)
        facts.append(Velmora::tr("Hidden columns: %1").arg(QLocale().toString(hidden)));
    const QList<ColumnRule> &rules = document.alignment.rules;
    const auto ruled =
        std::count_if(rules.begin(), rules.end(), [](const ColumnRule &rule) { return !rule.isExact(); });
    if (ruled > 0)
        facts.append(Velmora::tr("Columns with rules: %1").arg(QLocale().toString(qint64(ruled))));
    m_columnFacts->setText(facts.join(QStringLiteral("  |  ")));
}

void TableCompareWidget::compareBy(const QList<ColumnRef> &keys)
{
    m_choices->setKeys(keys);
    start();
}

void TableCompareWidget::changeColumn(qint32 column, const std::function<void(ColumnChoice &)> &change)
{
    const TableColumns &columns = m_scene->document()->alignment.columns;
    ColumnChoice choice = choiceOf(m_columns, columns, column);
    const ColumnRule before = choice.rule;
    change(choice);
    setChoice(m_columns, columns, column, choice);
    arrangeColumns();
    if (choice.rule != before)
        start();
}

void TableCompareWidget::showColumnMenu(int place, QPoint globalPosition)
{
    const std::shared_ptr<const TableDocument> document = m_scene->document();
    const TableColumns &columns = document->alignment.columns;
    const qint32 column = m_scene->columnAt(place);
    const ColumnRef ref{column, columns.name(column)};
    const ColumnChoice choice = choiceOf(m_columns, columns, column);
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("columnMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto toggle = [menu](const QString &text, bool isOn, auto act) {
        QAction *action = menu->addAction(text);
        action->setCheckable(true);
        action->setChecked(isOn);
        connect(action, &QAction::triggered, menu, act);
    };
    if (column < document->keyNames.size()) {
        toggle(Velmora::tr("Key"), document->keys.contains(ref), [this, document, ref](bool isOn) {
            QList<ColumnRef> keys = document->keys;
            keys.removeAll(ref);
            compareBy(isOn ? keys << ref : keys);
        });
    }
    toggle(Velmora::tr("Leave out of the comparison"), choice.rule.isLeftOut, [this, column](bool isOn) {
        changeColumn(column, [isOn](ColumnChoice &changed) { changed.rule.isLeftOut = isOn; });
    });
    menu->addSeparator();
    toggle(Velmora::tr("Freeze"), choice.isFrozen, [this, column](bool isOn) {
        changeColumn(column, [isOn](ColumnChoice &changed) { changed.isFrozen = isOn; });
    });
    menu->addAction(Velmora::tr("Hide"), this,
                    [this, column] { changeColumn(column, [](ColumnChoice &changed) { changed.isHidden = true; }); })
        ->setEnabled(m_scene->columnPlaces() > 1);
    menu->addAction(Velmora::tr("Show all columns"), this,
                    [this] {
                        for (ColumnChoice &each : m_columns)
                            each.isHidden = false;
                        m_columns.removeIf([](const ColumnChoice &each) { return each.isUsual(); });
                        arrangeColumns();
                    })
        ->setEnabled(m_scene->columnPlaces() < m_scene->columnCount());
    menu->addSeparator();
    menu->addAction(Velmora::tr("Fit width to content"), this, [this, place] { m_grids->fitColumn(place); });
    menu->addAction(Velmora::tr("Fit all widths"), m_grids, &TableGrids::fitColumns);
    menu->addSeparator();
    menu->addAction(m_bar->chooseColumns);
    menu->popup(globalPosition);
}

} // namespace velmora
