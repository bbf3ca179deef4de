#include "filetypes/table/duplicates_dialog.h"

#include "filetypes/table/duplicates_model.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>

#include <algorithm>

namespace velmora {

DuplicatesDialog::DuplicatesDialog(const std::shared_ptr<const TableDocument> &document, QWidget *parent)
    : QDialog(parent), m_document(document)
{
    constexpr QSize usualSize(620, 380);
    constexpr int widestKey = 240;
    constexpr int spare = 20;
    setObjectName(QStringLiteral("duplicatesDialog"));
    setWindowTitle(Velmora::tr("Duplicate keys"));
    auto *model = new DuplicatesModel(document, this);
    auto *text =
        new QLabel(Velmora::tr("Of the rows with one key the last is compared; the others are left out."), this);
    text->setWordWrap(true);
    auto *list = new QTreeView(this);
    list->setObjectName(QStringLiteral("duplicatesList"));
    list->setAccessibleName(Velmora::tr("Duplicate keys"));
    list->setModel(model);
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    for (int column = 0; column < DuplicatesModel::Rows; ++column) {
        list->resizeColumnToContents(column);
        list->setColumnWidth(column, std::min(widestKey, list->columnWidth(column) + spare));
    }
    list->setCurrentIndex(model->index(0, 0));
    auto *go = new QPushButton(Velmora::tr("Go to row"), this);
    go->setObjectName(QStringLiteral("goToDuplicate"));
    go->setDefault(true);
    auto *close = new QPushButton(Velmora::tr("Close"), this);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(go);
    buttons->addWidget(close);
    auto *column = new QVBoxLayout(this);
    column->addWidget(text);
    column->addWidget(list, 1);
    column->addLayout(buttons);
    connect(go, &QPushButton::clicked, this, [this, list] { goTo(list->currentIndex().row()); });
    connect(list, &QTreeView::doubleClicked, this, [this](const QModelIndex &index) { goTo(index.row()); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    resize(usualSize);
}

void DuplicatesDialog::goTo(int line)
{
    if (line < 0)
        return;
    const DuplicateKey &key = m_document->duplicates[std::size_t(line)];
    const std::vector<AlignedTableRow> &rows = m_document->alignment.rows;
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&key](const AlignedTableRow &aligned) { return aligned.row(key.side) == key.last; });
    if (row != rows.end())
        Q_EMIT rowWanted(qint32(row - rows.begin()));
    accept();
}

} // namespace velmora
