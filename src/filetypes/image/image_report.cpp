#include "filetypes/image/image_report.h"

#include "core/html.h"
#include "core/output_buffer.h"
#include "session/list/row_source.h"
#include "session/translate.h"

#include <QBuffer>

#include <algorithm>

namespace velmora {

namespace {

constexpr std::string_view pageStart = R"(<!DOCTYPE html>
<html><head><meta charset="utf-8"><meta name="color-scheme" content="light dark">
<style>
body { font-family: sans-serif; margin: 2em; }
table { border-collapse: collapse; margin: 1em 0; }
td, th { border: 1px solid #888; padding: 3px 8px; text-align: left; vertical-align: top; }
tr.different td:first-child::before { content: "≠ "; font-weight: bold; }
img { max-width: 100%; border: 1px solid #888; image-rendering: auto; }
</style>
)";

void writeRow(OutputBuffer &page, const QStringList &cells, std::string_view open)
{
    page << open;
    for (const QString &cell : cells)
        writeHtmlElement(page, "<td>", cell, "</td>");
    page << "</tr>\n";
}

void writeProperties(OutputBuffer &page, const ImageReport &report)
{
    page << "<table>\n<tr>";
    for (const QString &heading :
         {Velmora::tr("Property"), Velmora::tr("Left"), Velmora::tr("Right"), Velmora::tr("Status")})
        writeHtmlElement(page, "<th>", heading, "</th>");
    page << "</tr>\n";
    for (const KeyedRow &row : report.properties)
        writeRow(page, {row.key, row.left, row.right, statusText(row.status)},
                 row.status == PairStatus::Same ? "<tr>" : "<tr class=\"different\">");
    page << "</table>\n";
}

void writeRegions(OutputBuffer &page, const QList<QRect> &regions)
{
    constexpr qsizetype most = 1000; // a page with more helps nobody
    if (regions.isEmpty())
        return;
    writeHtmlElement(page, "<h2>", Velmora::tr("Differing regions: %1").arg(regions.size()), "</h2>\n");
    page << "<table>\n<tr>";
    for (const QString &heading :
         {QStringLiteral("#"), QStringLiteral("x"), QStringLiteral("y"), Velmora::tr("Width"), Velmora::tr("Height")})
        writeHtmlElement(page, "<th>", heading, "</th>");
    page << "</tr>\n";
    for (qsizetype i = 0; i < std::min(regions.size(), most); ++i) {
        const QRect &part = regions[i];
        const auto number = [](qsizetype value) { return QString::number(value); };
        writeRow(page, {number(i + 1), number(part.x()), number(part.y()), number(part.width()), number(part.height())},
                 "<tr>");
    }
    page << "</table>\n";
    if (regions.size() > most)
        writeHtmlElement(page, "<p>", Velmora::tr("The first %1 are listed.").arg(most), "</p>\n");
}

/// No larger than what browsers show and mail takes.
QImage shownOf(const ImageLevels &levels)
{
    constexpr double longest = 4096;
    const QImage &whole = levels.image();
    return levels.levelFor(std::min(1.0, longest / std::max({whole.width(), whole.height(), 1}) * 0.999));
}

bool writePicture(OutputBuffer &page, const QString &heading, const ImageLevels &levels)
{
    const QImage image = shownOf(levels);
    QByteArray png;
    QBuffer buffer(&png);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "png"))
        return false;
    writeHtmlElement(page, "<h2>", heading, "</h2>\n");
    if (image.size() != levels.image().size())
        writeHtmlElement(page, "<p>",
                         Velmora::tr("Made smaller: %1 × %2 instead of %3 × %4 pixels.")
                             .arg(image.width())
                             .arg(image.height())
                             .arg(levels.image().width())
                             .arg(levels.image().height()),
                         "</p>\n");
    const QByteArray text = png.toBase64();
    writeHtmlElement(page, "<img alt=\"", heading, "\"");
    page << " src=\"data:image/png;base64," << std::string_view(text.constData(), std::size_t(text.size())) << "\">\n";
    return true;
}

} // namespace

bool writeImageReport(QIODevice &device, const ImageReport &report, const CancelFlag &cancel)
{
    OutputBuffer page(device);
    page << pageStart;
    writeHtmlElement(page, "<title>", Velmora::tr("Image comparison"), "</title></head><body>\n");
    writeHtmlElement(page, "<h1>", Velmora::tr("Image comparison"), "</h1>\n");
    for (const QString &line : {report.captions.left, report.captions.right, report.tolerance})
        writeHtmlElement(page, "<p>", line, "</p>\n");
    writeHtmlElement(page, "<p><strong>", report.verdict, "</strong></p>\n");
    if (cancel.isCancelled() || !writePicture(page, Velmora::tr("Diff map (red = different)"), *report.map))
        return false;
    writeProperties(page, report);
    writeRegions(page, report.regions);
    const Sides<QString> headings{Velmora::tr("Left original"), Velmora::tr("Right original")};
    for (const Side side : bothSides) {
        if (cancel.isCancelled() || !writePicture(page, headings[side], *report.images[side]))
            return false;
    }
    page << "</body></html>\n";
    return page.finish() && !cancel.isCancelled();
}

} // namespace velmora
