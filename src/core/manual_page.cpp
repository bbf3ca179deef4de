#include "core/manual_page.h"

#include <QRegularExpression>

namespace velmora {

namespace {

/// Text that man(7) shows as it is. A line that begins with a full stop or an apostrophe would be a command.
QByteArray escaped(const QByteArray &text)
{
    QByteArray result = text;
    result.replace('\\', "\\e").replace('-', "\\-");
    if (result.startsWith('.') || result.startsWith('\''))
        result.prepend("\\&");
    return result.replace("\n.", "\n\\&.").replace("\n'", "\n\\&'");
}

} // namespace

ManualPage::ManualPage(const QByteArray &program, const QByteArray &purpose, const QByteArray &version,
                       QByteArrayList placeholders)
    : m_program(program), m_placeholders(std::move(placeholders))
{
    m_text = ".TH " + program.toUpper() + " 1 \"\" \"velmora " + version + "\" \"User Commands\"\n";
    section("NAME");
    m_text += escaped(program) + " \\- " + escaped(purpose) + '\n';
}

void ManualPage::section(const QByteArray &heading)
{
    m_text += ".SH " + heading + '\n';
}

void ManualPage::paragraph(const QByteArray &text)
{
    m_text += ".PP\n" + marked(text, Place::RunningText) + '\n';
}

void ManualPage::line(const QByteArray &text)
{
    m_text += marked(text, Place::Head) + "\n.br\n";
}

void ManualPage::term(const QByteArray &head, const QByteArray &text)
{
    m_text += ".TP\n" + marked(head, Place::Head) + '\n' + marked(text, Place::RunningText) + '\n';
}

void ManualPage::example(const QByteArray &text, const QByteArray &typed)
{
    paragraph(text);
    m_text += ".PP\n.nf\n.RS\n" + escaped(typed) + "\n.RE\n.fi\n";
}

void ManualPage::seeAlso(const QByteArrayList &pages)
{
    section("SEE ALSO");
    QByteArrayList entries;
    for (const QByteArray &page : pages)
        entries.append(".BR " + escaped(page) + " (1)");
    m_text += entries.join(",\n") + '\n';
}

QByteArray ManualPage::marked(const QByteArray &text, Place place) const
{
    static const QRegularExpression word(QStringLiteral("--[a-z][a-z-]*|[A-Za-z][A-Za-z-]*"));
    const QString plain = QString::fromUtf8(text);
    QByteArray result;
    qsizetype from = 0;
    const auto take = [&](qsizetype to) {
        result += QStringView(plain).mid(from, to - from).toUtf8();
        from = to;
    };
    // Fonts are marked by letters that no text has, as what surrounds them is escaped as a whole.
    for (auto words = word.globalMatch(plain); words.hasNext();) {
        const QRegularExpressionMatch match = words.next();
        const QByteArray found = match.captured().toUtf8();
        const bool isBold = found.startsWith("--") || found == m_program;
        const bool isPlaceholder = m_placeholders.contains(found) && (place == Place::Head || found == found.toUpper());
        if (!isBold && !isPlaceholder)
            continue;
        take(match.capturedStart());
        result += isBold ? '\1' : '\2';
        take(match.capturedEnd());
        result += '\3';
    }
    take(plain.size());
    return escaped(result).replace('\1', "\\fB").replace('\2', "\\fI").replace('\3', "\\fR");
}

} // namespace velmora
