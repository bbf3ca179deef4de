#include "cli/choices.h"
#include "cli/command.h"
#include "cli/output_target.h"
#include "cli/table_json.h"
#include "cli/table_rules.h"
#include "cli/text_input.h"
#include "filetypes/table/engine/table_proposal.h"
#include "filetypes/table/engine/table_report.h"

#include <QIODevice>

#include <array>

namespace velmora::cli {

namespace {

constexpr const char *tableDetails =
    "Compare two tables of delimited text cell by cell. The path - is standard input.\n"
    "Without --key rows are paired in their order, as the lines of a text are.\n";

const std::array tableOptions{
    OptionSpec{"key", "COLUMN",
               "pair rows by the value in this column, by name or number from 1 on; of rows with the same\n"
               "value the last one counts. Given several times, all these values are the key"},
    OptionSpec{"no-header", nullptr, "the first row is data, not the names of the columns"},
    OptionSpec{"by-name", nullptr,
               "compare columns of the same name, wherever they stand, instead of the same position"},
    OptionSpec{"leave-out", "COLUMN", "do not compare the values of this column; this and the next may be given often"},
    OptionSpec{"ignore-case", "COLUMN", "the case of letters does not count in this column"},
    OptionSpec{"ignore-space", "COLUMN", "nor does white space at the ends, or how much there is between words"},
    OptionSpec{"tolerance", "COLUMN=NUMBER",
               "numbers that differ by no more are the same, however they are written; with % behind the\n"
               "number, by no more than this share of the larger one"},
    OptionSpec{"dates-dmy", "COLUMN", "dates are the same however they are written; 5/3/2024 is in March"},
    OptionSpec{"dates-mdy", "COLUMN", "the same where 5/3/2024 is in May"},
    OptionSpec{"delimiter", "C",
               "what separates fields: one character, or \"tab\"; a tab for names that end in .tsv, else a comma"},
    OptionSpec{"encoding-left", "NAME", "the encoding of LEFT (UTF-8, UTF-16 LE, Big5, GB18030, ...; auto)"},
    OptionSpec{"encoding-right", "NAME", "the encoding of RIGHT"},
};

constexpr std::array examples{
    Example{"See which records of an export changed, by their identifier:",
            "velmora-cli table --key id --format csv monday.csv tuesday.csv"},
    Example{"The same where prices may differ by a cent and the time of the export does not matter:",
            "velmora-cli table --key id --tolerance price=0.01 --leave-out exported monday.csv tuesday.csv"},
};

struct Request {
    TextInput left;
    TextInput right;
    QChar delimiter = u',';
    bool hasHeader = true;
    bool columnsByName = false;
    QString rules; ///< as they were given
};

QString takeDelimiter(const Arguments &arguments, Request &request)
{
    const std::optional<QString> given = arguments.value("delimiter");
    if (!given) {
        const auto isTabbed = [](const QString &path) {
            return path.endsWith(QLatin1String(".tsv"), Qt::CaseInsensitive);
        };
        request.delimiter = isTabbed(request.left.path) || isTabbed(request.right.path) ? u'\t' : u',';
        return {};
    }
    const QString wanted = *given == QLatin1String("tab") ? QStringLiteral("\t") : *given;
    if (wanted.size() != 1 || wanted[0].isSurrogate() || QStringLiteral("\"\r\n").contains(wanted[0]))
        return QStringLiteral("--delimiter: \"%1\" is not one character that can separate fields").arg(*given);
    request.delimiter = wanted[0];
    return {};
}

QString takeEncoding(const Arguments &arguments, const char *option, TextInput &input)
{
    const std::optional<QString> name = arguments.value(option);
    if (name && !TextEncoding::isKnownName(*name))
        return QStringLiteral("unknown encoding \"%1\"").arg(*name);
    input.encoding = TextEncoding::fromName(name.value_or(QString()));
    return {};
}

QString takeRequest(const Arguments &arguments, Request &request)
{
    if (arguments.paths().size() != 2)
        return QStringLiteral("two paths are needed, %1 given").arg(arguments.paths().size());
    request.left.path = arguments.paths()[0];
    request.right.path = arguments.paths()[1];
    request.hasHeader = !arguments.has("no-header");
    request.columnsByName = arguments.has("by-name");
    request.rules = givenRules(arguments);
    if (request.columnsByName && !request.hasHeader)
        return QStringLiteral("--by-name goes without --no-header");
    for (const QString &error :
         {takeDelimiter(arguments, request), takeEncoding(arguments, "encoding-left", request.left),
          takeEncoding(arguments, "encoding-right", request.right)}) {
        if (!error.isEmpty())
            return error;
    }
    return {};
}

/// What the options say of columns, which must be there.
QString takeColumns(const Arguments &arguments, const TableColumns &columns, TableOptions &options)
{
    for (const QString &key : arguments.values("key")) {
        const qint32 column = columnCalled(columns, key);
        if (column < 0)
            return QStringLiteral("no column \"%1\"").arg(key);
        options.keys.append(column);
    }
    return takeColumnRules(arguments, columns, options.rules);
}

QString summaryOf(const TableAlignment &table)
{
    const TableCounts &counts = table.counts;
    return QStringLiteral("Same: %1  |  Modified: %2  |  Left only: %3  |  Right only: %4  |  Total rows: %5")
        .arg(counts.same)
        .arg(counts.modified)
        .arg(counts.leftOnly)
        .arg(counts.rightOnly)
        .arg(table.rows.size());
}

bool writeSummary(QIODevice &device, const TableAlignment &table, const Request &)
{
    const QByteArray line = summaryOf(table).toLatin1() + '\n';
    return device.write(line) == line.size();
}

bool writeJson(QIODevice &device, const TableAlignment &table, const Request &request)
{
    OutputBuffer output(device);
    writeTableJson(output, table, request.left, request.right);
    return output.finish();
}

bool writeCsv(QIODevice &device, const TableAlignment &table, const Request &)
{
    return writeTableCsv(device, table);
}

bool writeHtml(QIODevice &device, const TableAlignment &table, const Request &request)
{
    TableReportLabels labels;
    labels.title = QStringLiteral("Velmora — table report");
    labels.left = QStringLiteral("Left: %1").arg(request.left.path);
    labels.right = QStringLiteral("Right: %1").arg(request.right.path);
    labels.generatedAt = QStringLiteral("Generated at");
    labels.leftRow = QStringLiteral("Left row");
    labels.rightRow = QStringLiteral("Right row");
    labels.summary = summaryOf(table);
    if (!request.rules.isEmpty())
        labels.rules = QStringLiteral("Rules of columns: %1").arg(request.rules);
    return writeTableReport(device, table, labels, QDateTime::currentDateTime());
}

using Writer = bool (*)(QIODevice &device, const TableAlignment &table, const Request &request);

constexpr std::array formats{
    ChoiceOf<Writer>{{"summary", "one line with the numbers of rows (the default)"}, writeSummary},
    ChoiceOf<Writer>{{"json", "every row, cell by cell, as JSON"}, writeJson},
    ChoiceOf<Writer>{{"csv", "the rows that differ, both versions of each"}, writeCsv},
    ChoiceOf<Writer>{{"html", "the rows that differ as a page for reading"}, writeHtml},
};

void warnOfReplaced(const Streams &streams, const TextInput &input, const std::vector<ReplacedRow> &replaced)
{
    if (replaced.empty())
        return;
    complain(streams, QStringLiteral("warning: %1: a later row has the same key as each of %2 rows that are left out, "
                                     "the first in row %3")
                          .arg(input.path)
                          .arg(replaced.size())
                          .arg(replaced.front().row + 1));
}

void warnOfDelimiter(const Streams &streams, const Request &request)
{
    const QChar other = proposedDelimiter(request.left.text.lines, request.right.text.lines, request.delimiter);
    if (other.isNull())
        return;
    const QString name = other == u'\t' ? QStringLiteral("tab") : QString(other);
    complain(streams, QStringLiteral("warning: fields seem to be separated otherwise: --delimiter \"%1\"").arg(name));
}

int runTable(const Arguments &arguments, const Streams &streams)
{
    Request request;
    if (const QString error = takeRequest(arguments, request); !error.isEmpty())
        return fail(streams, error);
    readTextInputs(request.left, request.right, streams.input);
    for (const TextInput *input : {&request.left, &request.right}) {
        if (!input->error.isEmpty())
            return fail(streams, QStringLiteral("%1: %2").arg(input->path, input->error));
        warnOfUndecodable(streams, *input);
    }
    if (!arguments.has("delimiter"))
        warnOfDelimiter(streams, request);
    const TableText left(withoutQuotedReturns(request.left.text.lines), request.delimiter);
    const TableText right(withoutQuotedReturns(request.right.text.lines), request.delimiter);
    TableOptions options;
    options.hasHeader = request.hasHeader;
    options.columnsByName = request.columnsByName;
    const TableColumns columns = tableColumns(left, right, options, {});
    if (const QString error = takeColumns(arguments, columns, options); !error.isEmpty())
        return fail(streams, error);
    Progress progress;
    const TableAlignment table = alignTables(left, right, columns, options, {}, progress);
    if (table.columns.namesDiffer() && !request.columnsByName)
        complain(streams, QStringLiteral("warning: the columns are named differently"));
    if (options.hasHeader && (hasLongerRows(left, columns.count()) || hasLongerRows(right, columns.count())))
        complain(streams, QStringLiteral("warning: fields behind the last column that has a name are not compared"));
    warnOfReplaced(streams, request.left, table.replaced.left);
    warnOfReplaced(streams, request.right, table.replaced.right);
    const Writer write = chosen(formats, arguments, "format").value;
    return writeTo(arguments.value("output"), streams, [&](QIODevice &device) {
        return Written{write(device, table, request), table.counts.differences() > 0};
    });
}

} // namespace

Command tableCommand()
{
    static constexpr auto formatChoices = choicesOf(formats);
    return {"table",
            "[OPTION]... LEFT RIGHT",
            "compare two tables (CSV, TSV) cell by cell",
            tableDetails,
            formatChoices,
            tableOptions,
            examples,
            runTable};
}

} // namespace velmora::cli
