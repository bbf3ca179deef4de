#include "filetypes/image/properties_dialog.h"

#include "session/diff_colours.h"
#include "session/plain_text.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>

namespace velmora {

ImagePropertiesDialog::ImagePropertiesDialog(QWidget *parent) : QDialog(parent), m_rows(new QTreeWidget)
{
    setObjectName(QStringLiteral("imageProperties"));
    setWindowTitle(Velmora::tr("Image properties"));
    m_rows->setHeaderLabels({Velmora::tr("Property"), Velmora::tr("Left"), Velmora::tr("Right")});
    m_rows->setRootIsDecorated(false);
    m_rows->setUniformRowHeights(true);
    m_rows->setAllColumnsShowFocus(true);
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(Velmora::tr("Close"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_rows);
    column->addWidget(buttons);
    resize(620, 420);
}

void ImagePropertiesDialog::setRows(const QList<KeyedRow> &rows)
{
    m_rows->clear();
    for (const KeyedRow &row : rows) {
        const bool differs = row.status != PairStatus::Same;
        const QString sign = differs ? QStringLiteral("≠ ") : QString();
        auto *item = new QTreeWidgetItem(m_rows, {sign + row.key, row.left.simplified(), row.right.simplified()});
        item->setToolTip(1, plainToolTip(row.left));
        item->setToolTip(2, plainToolTip(row.right));
        for (int column = 0; differs && column < item->columnCount(); ++column) {
            item->setBackground(column, diffColour(DiffColour::Modified));
            item->setForeground(column, diffColour(DiffColour::Text));
        }
    }
    for (int column = 0; column < 2; ++column)
        m_rows->resizeColumnToContents(column);
}

} // namespace velmora
