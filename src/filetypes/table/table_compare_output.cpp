// What a table comparison hands out: reports, and rows for the clipboard.

#include "filetypes/table/column_words.h"
#include "filetypes/table/engine/cell_cursor.h"
#include "filetypes/table/engine/table_report.h"
#include "filetypes/table/row_card.h"
#include "filetypes/table/table_compare_widget.h"
#include "filetypes/table/table_grids.h"
#include "filetypes/table/table_remarks.h"
#include "filetypes/table/table_scene.h"
#include "session/dialogs.h"
#include "session/frame/status_line.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>

namespace velmora {

namespace {

TableReportLabels reportLabels(const TableDocument &document, const SessionPaths &files)
{
    TableReportLabels labels;
    labels.title = Velmora::tr("Velmora — table report");
    labels.left = Velmora::tr("Left: %1").arg(shownPath(files.left));
    labels.right = Velmora::tr("Right: %1").arg(shownPath(files.right));
    labels.generatedAt = Velmora::tr("Generated at");
    labels.leftRow = Velmora::tr("Left row");
    labels.rightRow = Velmora::tr("Right row");
    labels.summary = tableCounts(document.alignment);
    labels.rules = allRules(document);
    return labels;
}

/// Appends a row of one side as it is shown: without hidden columns, frozen ones first.
void appendRow(QByteArray &csv, const TableAlignment &alignment, const AlignedTableRow &row, Side side,
               const ColumnArrangement &arrangement)
{
    std::vector<std::string_view> fields;
    for (CellCursor cells(alignment, row); cells.next();)
        fields.push_back(cells.field(side));
    std::string buffer;
    const auto append = [&](qint32 column) {
        appendCsvField(csv, fieldValue(fields[std::size_t(column)], buffer));
        csv.append(',');
    };
    for (const qint32 column : arrangement.shown)
        append(column);
    for (qint32 column = TableScene::columnLimit; column < alignment.columns.count(); ++column)
        append(column);
    csv.chop(1);
}

} // namespace

bool TableCompareWidget::setPendingReport(const QString &path)
{
    m_pendingReport = path;
    return true;
}

void TableCompareWidget::onExport()
{
    if (!m_scene->document())
        return;
    Dialogs::instance().saveFile(
        this, Velmora::tr("Export table report"), besideFile(m_shown.left, QStringLiteral("table-report.html")),
        Velmora::tr("HTML (*.html);;CSV (*.csv)"), [this](const QString &path) { writeReport(path); });
}

void TableCompareWidget::writeReport(const QString &path)
{
    const std::shared_ptr<const TableDocument> document = m_scene->document();
    const TableReportLabels labels = reportLabels(*document, m_shown);
    const bool isCsv = path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive);
    m_reports.write(path, [document, labels, isCsv](QIODevice &device, const CancelFlag &cancel) {
        return isCsv ? writeTableCsv(device, document->alignment, cancel)
                     : writeTableReport(device, document->alignment, labels, QDateTime::currentDateTime(), cancel);
    });
}

void TableCompareWidget::copyRows()
{
    if (m_card->hasKeyboard()) {
        m_card->copy();
        return;
    }
    constexpr qsizetype limit = 16 * 1024 * 1024;
    QByteArray csv;
    for (const qint32 place : m_grids->selectedPlaces()) {
        const AlignedTableRow &row = m_scene->row(m_scene->rowAt(place));
        if (row.row(m_grids->side()) < 0)
            continue;
        appendRow(csv, m_scene->document()->alignment, row, m_grids->side(), m_scene->arrangement());
        csv.append('\n');
        if (csv.size() > limit) {
            m_status->showMessage(Velmora::tr("Too much to copy (limit %1 MB)").arg(limit >> 20));
            return;
        }
    }
    if (!csv.isEmpty())
        QApplication::clipboard()->setText(QString::fromUtf8(csv));
}

} // namespace velmora
