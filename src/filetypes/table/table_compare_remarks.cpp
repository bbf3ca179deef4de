// What a table comparison says above its rows: remarks, and what could be chosen instead.

#include "filetypes/table/duplicates_dialog.h"
#include "filetypes/table/table_compare_widget.h"
#include "filetypes/table/table_grids.h"
#include "filetypes/table/table_inputs_bar.h"
#include "filetypes/table/table_remarks.h"
#include "filetypes/table/table_scene.h"
#include "session/frame/notice_bar.h"
#include "session/translate.h"

namespace velmora {

void TableCompareWidget::showRemarks(const TableDocument &document)
{
    const bool byName = document.alignment.columns.arePairedByName();
    m_remarks->setAction(!document.alignment.columns.namesDiffer() ? QString()
                         : byName                                  ? Velmora::tr("Match columns by position")
                                                                   : Velmora::tr("Match columns by name"),
                         Velmora::tr("Compare again"));
    m_remarks->tell(tableRemarks(document), NoticeBar::Tone::Warning);
    m_duplicates->tell(tableDuplicates(document), NoticeBar::Tone::Warning);
    if (!document.delimiterProposal.isNull())
        proposeDelimiter(document.delimiterProposal);
    else if (document.keyProposal >= 0)
        proposeKey(document);
    else
        m_proposal->clear();
}

void TableCompareWidget::proposeDelimiter(QChar delimiter)
{
    const QString name = m_choices->delimiterName(delimiter);
    m_proposal->setAction(Velmora::tr("Use %1").arg(name), Velmora::tr("Compare again with this delimiter"));
    m_proposal->tell(Velmora::tr("The fields seem to be separated by another character: %1").arg(name),
                     NoticeBar::Tone::Remark);
}

void TableCompareWidget::proposeKey(const TableDocument &document)
{
    const QString name = document.keyNames[document.keyProposal].left(60);
    m_proposal->setAction(Velmora::tr("Match by \"%1\"").arg(name),
                          Velmora::tr("Compare again, pairing the rows with the same value in this column"));
    m_proposal->tell(Velmora::tr("The values of the column \"%1\" are nearly all different: rows can be matched by "
                                 "them, wherever they stand.")
                         .arg(name),
                     NoticeBar::Tone::Remark);
}

void TableCompareWidget::openDuplicates()
{
    const std::shared_ptr<const TableDocument> document = m_scene->document();
    if (!document || document->duplicates.empty())
        return;
    auto *dialog = new DuplicatesDialog(document, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &DuplicatesDialog::rowWanted, this, [this, document](qint32 row) {
        if (m_scene->document() == document)
            m_grids->goToRow(row);
    });
    dialog->open();
}

} // namespace velmora
