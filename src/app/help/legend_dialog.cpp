#include "app/help/legend_dialog.h"

#include "session/folder_colours.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include <iterator>

namespace velmora {

namespace {

constexpr char olderFile[] = QT_TRANSLATE_NOOP("Velmora", "Older file");
constexpr char uniqueFile[] = QT_TRANSLATE_NOOP("Velmora", "Unique file");
constexpr char newerFile[] = QT_TRANSLATE_NOOP("Velmora", "Newer or different file");

/// One state of a folder with the marks of the files in it, and what these files are called.
struct LegendRow {
    QList<FolderMark> marks;
    const char *folder;
    QList<const char *> files;
};

QList<LegendRow> legendRows()
{
    using enum FolderMark;
    return {
        {{Unknown},
         QT_TRANSLATE_NOOP("Velmora", "Unknown; open to scan"),
         {QT_TRANSLATE_NOOP("Velmora", "Unknown file")}},
        {{Scanning}, QT_TRANSLATE_NOOP("Velmora", "Unknown; scanning"), {}},
        {{Same},
         QT_TRANSLATE_NOOP("Velmora", "Contains identical files only"),
         {QT_TRANSLATE_NOOP("Velmora", "Identical file")}},
        {{Older}, QT_TRANSLATE_NOOP("Velmora", "Contains older files"), {olderFile}},
        {{Unique}, QT_TRANSLATE_NOOP("Velmora", "Contains unique files"), {uniqueFile}},
        {{Newer}, QT_TRANSLATE_NOOP("Velmora", "Contains newer or different files"), {newerFile}},
        {{Unique, Older}, QT_TRANSLATE_NOOP("Velmora", "Contains unique and older files"), {uniqueFile, olderFile}},
        {{Newer, Older},
         QT_TRANSLATE_NOOP("Velmora", "Contains newer/different and older files"),
         {newerFile, olderFile}},
        {{Newer, Unique},
         QT_TRANSLATE_NOOP("Velmora", "Contains newer/different and unique files"),
         {newerFile, uniqueFile}},
        {{Newer, Unique, Older},
         QT_TRANSLATE_NOOP("Velmora", "Contains newer/different, unique, and older files"),
         {newerFile, uniqueFile, olderFile}},
        {{Unique}, QT_TRANSLATE_NOOP("Velmora", "Unique folder (one side only)"), {}},
        {{Filtered},
         QT_TRANSLATE_NOOP("Velmora", "Contains filtered files only"),
         {QT_TRANSLATE_NOOP("Velmora", "Filtered file")}},
    };
}

struct LegendSign {
    const char *sign; ///< UTF-8, as it stands between the panes
    const char *text;
};

constexpr LegendSign legendSigns[] = {
    {"=", QT_TRANSLATE_NOOP("Velmora", "Same")},
    {"≈", QT_TRANSLATE_NOOP("Velmora", "Same size and time, not read")},
    {"≠", QT_TRANSLATE_NOOP("Velmora", "Different")},
    {"◂ ▸", QT_TRANSLATE_NOOP("Velmora", "The newer side of two files that differ")},
    {"←", QT_TRANSLATE_NOOP("Velmora", "Left only")},
    {"→", QT_TRANSLATE_NOOP("Velmora", "Right only")},
    {"?", QT_TRANSLATE_NOOP("Velmora", "Not compared yet")},
    {"…", QT_TRANSLATE_NOOP("Velmora", "Being compared")},
    {"-", QT_TRANSLATE_NOOP("Velmora", "Contains filtered files only")},
};

/// The colours and signs of some marks, side by side.
class Swatch final : public QWidget {
public:
    explicit Swatch(QList<FolderMark> marks, QWidget *parent) : QWidget(parent), m_marks(std::move(marks))
    {
        QFont bold = font();
        bold.setWeight(QFont::Bold);
        setFont(bold);
        setFixedSize(3 * cell, cell);
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QRect rect(0, 0, cell, cell);
        for (const FolderMark mark : m_marks) {
            const QRectF box = QRectF(rect).adjusted(1, 1, -1, -1);
            painter.setPen(Qt::NoPen);
            painter.setBrush(folderMarkColour(mark));
            painter.drawRoundedRect(box, 4, 4);
            painter.setPen(isDarkTheme() ? Qt::black : Qt::white);
            painter.drawText(box, Qt::AlignCenter, QString(folderMarkSign(mark)));
            rect.translate(cell, 0);
        }
    }

private:
    static constexpr int cell = 20;
    QList<FolderMark> m_marks;
};

QLabel *makeHeading(const QString &text)
{
    auto *label = new QLabel(text);
    QFont font = label->font();
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
    return label;
}

/// What the signs in the middle of the tree mean, in two columns.
QGridLayout *makeSigns()
{
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(3);
    constexpr int columns = 2;
    const int lines = int(std::size(legendSigns) + columns - 1) / columns;
    for (int i = 0; i < int(std::size(legendSigns)); ++i) {
        auto *sign = makeHeading(QString::fromUtf8(legendSigns[i].sign));
        sign->setAlignment(Qt::AlignCenter);
        grid->addWidget(sign, i % lines, 2 * (i / lines));
        grid->addWidget(new QLabel(Velmora::tr(legendSigns[i].text)), i % lines, 2 * (i / lines) + 1);
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return grid;
}

} // namespace

LegendDialog::LegendDialog(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(Velmora::tr("Legend"));

    auto *table = new QFrame;
    table->setFrameShape(QFrame::StyledPanel);
    table->setBackgroundRole(QPalette::Base);
    table->setAutoFillBackground(true);
    auto *grid = new QGridLayout(table);
    grid->setContentsMargins(16, 12, 16, 12);
    grid->setHorizontalSpacing(20);
    grid->setVerticalSpacing(6);
    grid->addWidget(makeHeading(Velmora::tr("Folder")), 0, 1);
    grid->addWidget(makeHeading(Velmora::tr("File")), 0, 2);
    const QList<LegendRow> rows = legendRows();
    for (const LegendRow &row : rows) {
        QStringList files;
        for (const char *file : row.files)
            files.append(Velmora::tr(file));
        const int line = grid->rowCount();
        grid->addWidget(new Swatch(row.marks, table), line, 0);
        grid->addWidget(new QLabel(Velmora::tr(row.folder)), line, 1);
        grid->addWidget(new QLabel(files.join(QStringLiteral(" + "))), line, 2);
    }

    const int below = grid->rowCount();
    grid->addWidget(makeHeading(Velmora::tr("Signs between the two sides")), below, 0, 1, 3);
    grid->addLayout(makeSigns(), below + 1, 0, 1, 3);

    auto *close = new QPushButton(Velmora::tr("Close"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto *whole = new QVBoxLayout(this);
    whole->addWidget(table);
    whole->addLayout(buttons);
}

} // namespace velmora
