#include "folder/engine/folder_report.h"

#include "core/html.h"

#include <QIODevice>

#include <algorithm>
#include <string_view>

namespace velmora {

namespace {

constexpr std::string_view styleSheet =
    "body { font-family: 'Segoe UI', 'Microsoft YaHei', sans-serif; font-size: 13px; margin: 20px; }\n"
    "h1 { font-size: 20px; color: #333; margin-bottom: 8px; }\n"
    ".info { font-size: 13px; color: #555; margin-bottom: 16px; line-height: 1.6; }\n"
    "table { border-collapse: collapse; width: 100%; }\n"
    "th { background: #e8e8e8; padding: 8px 10px; text-align: left; border: 1px solid #ccc; font-size: 13px; }\n"
    "td { padding: 5px 10px; border: 1px solid #ddd; font-size: 12px; }\n"
    ".status-equal { color: #888; }\n"
    ".status-modified { background: #fff3cd; }\n"
    ".status-leftonly { background: #f2dede; }\n"
    ".status-rightonly { background: #dff0d8; }\n"
    ".summary { margin-top: 16px; font-size: 13px; color: #333; }\n"
    ".summary span { margin-right: 20px; }\n"
    ".tag { display: inline-block; padding: 2px 8px; border-radius: 3px; font-size: 11px; font-weight: bold; }\n"
    ".tag-equal { background: #eee; color: #888; }\n"
    ".tag-modified { background: #f0ad4e; color: #fff; }\n"
    ".tag-leftonly { background: #d9534f; color: #fff; }\n"
    ".tag-rightonly { background: #5cb85c; color: #fff; }\n";

constexpr std::string_view fileIcon = "\xF0\x9F\x93\x84 ";   // page facing up
constexpr std::string_view folderIcon = "\xF0\x9F\x93\x81 "; // file folder

/// What the classes of rows and tags end in, by status.
constexpr std::array<std::string_view, 4> classNames{"equal", "leftonly", "rightonly", "modified"};

std::size_t statusIndex(const FolderDiffItem &item)
{
    return std::size_t(std::clamp(item.status, 0, 3));
}

} // namespace

FolderReportWriter::FolderReportWriter(QIODevice &device, FolderReportLabels labels)
    : m_page(device), m_labels(std::move(labels))
{}

void FolderReportWriter::begin(const QDateTime &time)
{
    m_page << "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n";
    writeHtmlElement(m_page, "<title>", m_labels.title, "</title>\n");
    m_page << "<style>\n" << styleSheet << "</style>\n</head>\n<body>\n";
    writeHtmlElement(m_page, "<h1>", m_labels.heading, "</h1>\n");
    writeHtmlElement(m_page, "<div class=\"info\">", m_labels.left, "<br>");
    writeHtmlElement(m_page, "", m_labels.right, "<br>");
    writeHtmlElement(m_page, "", m_labels.generatedAt, ": ");
    writeHtmlElement(m_page, "", time.toString(u"yyyy-MM-dd hh:mm:ss"), "</div>\n<table>\n<tr>");
    for (const QString &column : m_labels.columns)
        writeHtmlElement(m_page, "<th>", column, "</th>");
    m_page << "</tr>\n";
}

void FolderReportWriter::addRow(const FolderDiffItem &item)
{
    const std::size_t status = statusIndex(item);
    ++m_counts[status];
    m_page << "<tr class=\"status-" << classNames[status] << "\"><td>" << (item.isDir ? folderIcon : fileIcon);
    writeHtmlElement(m_page, {}, item.name, {});
    m_page << "</td><td><span class=\"tag tag-" << classNames[status] << "\">";
    writeHtmlElement(m_page, {}, m_labels.statuses[status], "</span>");
    if (item.isUnread && item.diffStatus() == FolderDiffStatus::Same) {
        m_unread += item.isDir ? 0 : 1;
        writeHtmlElement(m_page, " ", m_labels.unread, {});
    }
    m_page << "</td>";
    addSize(item.leftPath, item.leftSize);
    addSize(item.rightPath, item.rightSize);
    addTime(item.leftTime);
    addTime(item.rightTime);
    m_page << "</tr>\n";
}

void FolderReportWriter::addSize(const QString &path, qint64 size)
{
    m_page << "<td>";
    if (path.isEmpty()) {
        m_page << '-';
    } else {
        QByteArray digits = QByteArray::number(size);
        for (qsizetype at = digits.size() - 3; at > 0; at -= 3)
            digits.insert(at, ',');
        m_page << std::string_view(digits.constData(), std::size_t(digits.size()));
    }
    m_page << "</td>";
}

void FolderReportWriter::addTime(const QDateTime &time)
{
    writeHtmlElement(m_page, "<td>",
                     time.isValid() ? time.toLocalTime().toString(u"yyyy/MM/dd hh:mm") : QStringLiteral("-"), "</td>");
}

bool FolderReportWriter::finish()
{
    const auto count = [this](FolderDiffStatus status) { return m_counts[std::size_t(status)]; };
    const QString summary = m_labels.summary.arg(m_counts[0] + m_counts[1] + m_counts[2] + m_counts[3])
                                .arg(count(FolderDiffStatus::Same))
                                .arg(count(FolderDiffStatus::Different))
                                .arg(count(FolderDiffStatus::LeftOnly))
                                .arg(count(FolderDiffStatus::RightOnly));
    m_page << "</table>\n";
    writeHtmlElement(m_page, "<div class=\"summary\">", summary, "</div>\n");
    if (m_unread > 0)
        writeHtmlElement(m_page, "<div class=\"summary\">", m_labels.unreadTotal.arg(m_unread), "</div>\n");
    m_page << "</body>\n</html>\n";
    return m_page.finish();
}

bool writeFolderReport(QIODevice &device, const QList<FolderDiffItem> &items, const FolderReportLabels &labels,
                       const QDateTime &time, const CancelFlag &cancel)
{
    FolderReportWriter writer(device, labels);
    writer.begin(time);
    for (const FolderDiffItem &item : items) {
        if (cancel.isCancelled())
            return false;
        writer.addRow(item);
    }
    return writer.finish();
}

} // namespace velmora
