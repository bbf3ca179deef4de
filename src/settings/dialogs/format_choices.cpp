#include "settings/dialogs/format_choices.h"

#include "core/line_ends.h"
#include "core/text_encoding.h"
#include "session/translate.h"
#include "settings/options/text_session_options.h"
#include "text/syntax/syntax_library.h"

#include <QComboBox>
#include <QFormLayout>

namespace velmora {

namespace {

QComboBox *makeCombo(const QString &name)
{
    auto *combo = new QComboBox;
    combo->setObjectName(name);
    // Long names of other origin must not widen the dialog.
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(16);
    return combo;
}

/// Lists `general`, which stands for the first stored word, and the names that stand for themselves; chooses `stored`.
void fill(QComboBox &combo, const QString &general, const QString &generalStored, const QStringList &names,
          const QString &stored)
{
    combo.clear();
    combo.addItem(general, generalStored);
    for (const QString &name : names)
        combo.addItem(name, name);
    if (combo.findData(stored) < 0)
        combo.addItem(stored, stored);
    combo.setCurrentIndex(combo.findData(stored));
}

/// The first choice, which leaves a file its own line ends, is stored as whatever asks for none.
void fillLineEnds(QComboBox &combo, const QString &stored)
{
    const std::optional<LineEndStyle> asked = lineEndStyleFromName(stored);
    combo.clear();
    combo.addItem(Velmora::tr("As in the file"), asked || stored.isEmpty() ? TextSessionOptions().leftEol : stored);
    for (const LineEndStyle style : {LineEndStyle::CrLf, LineEndStyle::Lf, LineEndStyle::Cr}) {
        const QString name = lineEndStyleName(style);
        combo.addItem(name, asked == style ? stored : name);
        if (asked == style)
            combo.setCurrentIndex(combo.count() - 1);
    }
}

/// What stands for "everything else" is stored as it is shown, as every file type is, in the languages whose word for
/// it is known everywhere.
QString storedEverythingElse()
{
    const QString shown = Velmora::tr("Everything else");
    return leavesFileTypeOpen(shown) ? shown : QStringLiteral("Everything else");
}

} // namespace

FormatChoices::FormatChoices(const QString &title, const QString &prefix, QWidget *parent)
    : QGroupBox(title, parent),
      m_fileType(makeCombo(prefix + QLatin1String("FileType"))),
      m_encoding(makeCombo(prefix + QLatin1String("Encoding"))),
      m_eol(makeCombo(prefix + QLatin1String("Eol")))
{
    auto *form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(Velmora::tr("File type:"), m_fileType);
    form->addRow(Velmora::tr("Encoding:"), m_encoding);
    form->addRow(Velmora::tr("Line ends:"), m_eol);
    m_eol->setToolTip(Velmora::tr("The line ends that the file has, and those that it gets when this side is saved"));
}

void FormatChoices::setFormat(const Format &format, const QString &detectedType)
{
    const TextSessionOptions builtIn;
    const QString stored = storedEverythingElse();
    fill(*m_fileType, Velmora::tr("Everything else"), stored, SyntaxLibrary::bundled().names(),
         leavesFileTypeOpen(format.fileType) ? stored : format.fileType);
    if (!detectedType.isEmpty()) {
        m_fileType->insertItem(1, Velmora::tr("%1: %2").arg(Velmora::tr("Detected"), detectedType), stored);
        if (m_fileType->currentIndex() == 0)
            m_fileType->setCurrentIndex(1);
    }

    // Every word for automatic detection is the same choice and stays as it was stored.
    const bool automatic =
        TextEncoding::isKnownName(format.encoding) && TextEncoding::fromName(format.encoding).isAutomatic();
    const QStringList encodings = TextEncoding::offeredNames();
    fill(*m_encoding, Velmora::tr("Auto detect"), automatic ? format.encoding : builtIn.leftEncoding, encodings.mid(1),
         format.encoding);

    fillLineEnds(*m_eol, format.eol);
}

void FormatChoices::setOwnLineEnds(const QString &name)
{
    const QString asInFile = Velmora::tr("As in the file");
    m_eol->setItemText(0, name.isEmpty() ? asInFile : Velmora::tr("%1: %2").arg(asInFile, name));
}

FormatChoices::Format FormatChoices::format() const
{
    // A type that was detected holds for the files of that comparison alone.
    const bool detected = m_fileType->currentText().startsWith(Velmora::tr("Detected"));
    return {detected ? QStringLiteral("Everything else") : m_fileType->currentData().toString(),
            m_encoding->currentData().toString(), m_eol->currentData().toString()};
}

} // namespace velmora
