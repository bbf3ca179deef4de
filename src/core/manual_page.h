#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace velmora {

/// Writes a page for the section of user commands of a Unix manual, part by part, in the language of man(7).
///
/// Texts are plain UTF-8, in which a switch such as "--help" and the program's name come out bold, and placeholders in
/// italics: in running text only those in capitals. Nothing in them is taken for a command of the language.
class ManualPage final {
public:
    /// `purpose` follows the program's name in the page's first line; `version` stands at its foot.
    ManualPage(const QByteArray &program, const QByteArray &purpose, const QByteArray &version,
               QByteArrayList placeholders);

    void section(const QByteArray &heading);
    void paragraph(const QByteArray &text);
    /// A line of its own, after the paragraph before it.
    void line(const QByteArray &text);
    /// Something that is explained, with its explanation indented below it.
    void term(const QByteArray &head, const QByteArray &text);
    /// Terms of a term stand between these.
    void indent() { m_text += ".RS\n"; }
    void outdent() { m_text += ".RE\n"; }
    /// Lines as they are typed.
    void example(const QByteArray &text, const QByteArray &typed);
    /// Other pages of the same section.
    void seeAlso(const QByteArrayList &pages);

    [[nodiscard]] const QByteArray &text() const noexcept { return m_text; }

private:
    enum class Place { Head, RunningText };
    [[nodiscard]] QByteArray marked(const QByteArray &text, Place place) const;

    QByteArray m_program;
    QByteArrayList m_placeholders;
    QByteArray m_text;
};

} // namespace velmora
