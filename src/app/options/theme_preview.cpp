#include "app/options/theme_preview.h"

#include "session/diff_colours.h"

#include <QFontDatabase>
#include <QPainter>

namespace velmora {

namespace {

struct SampleRow {
    const char *left;
    const char *right;
    char leftSign;
    char rightSign;
    DiffColour leftFill;
    DiffColour rightFill;
};

constexpr SampleRow sampleRows[] = {
    {"[window]", "[window]", ' ', ' ', DiffColour::Background, DiffColour::Background},
    {"width = 1024", "width = 1280", '~', '~', DiffColour::Modified, DiffColour::Modified},
    {"height = 800", "height = 800", ' ', ' ', DiffColour::Background, DiffColour::Background},
    {"border = 2", nullptr, '-', ' ', DiffColour::Removed, DiffColour::Filler},
    {"title = Home", "title = Home", ' ', ' ', DiffColour::Background, DiffColour::Background},
    {nullptr, "theme = dark", ' ', '+', DiffColour::Filler, DiffColour::Added},
};

constexpr int rowPadding = 6;
constexpr int signWidth = 22;

void paintSide(QPainter &painter, const QRect &rect, const char *text, char sign, DiffColour fill)
{
    painter.fillRect(rect, diffColour(fill));
    if (!text) {
        painter.fillRect(rect, QBrush(diffColour(DiffColour::FillerHatch), Qt::BDiagPattern));
        return;
    }
    const QRect signRect(rect.left(), rect.top(), signWidth, rect.height());
    painter.setPen(diffColour(DiffColour::MutedText));
    painter.drawText(signRect, Qt::AlignCenter, QString(QLatin1Char(sign)));
    painter.setPen(diffColour(DiffColour::Text));
    painter.drawText(rect.adjusted(signWidth, 0, -4, 0), Qt::AlignVCenter | Qt::AlignLeft, QString::fromLatin1(text));
}

} // namespace

ThemePreview::ThemePreview(QWidget *parent) : QWidget(parent)
{
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(font().pointSizeF());
    setFont(fixed);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ThemePreview::sizeHint() const
{
    return {320, static_cast<int>(std::size(sampleRows)) * (fontMetrics().height() + rowPadding) + 2};
}

void ThemePreview::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    const int rowHeight = fontMetrics().height() + rowPadding;
    const int half = (width() - 3) / 2;
    int top = 1;
    for (const SampleRow &row : sampleRows) {
        paintSide(painter, {1, top, half, rowHeight}, row.left, row.leftSign, row.leftFill);
        paintSide(painter, {half + 2, top, width() - half - 3, rowHeight}, row.right, row.rightSign, row.rightFill);
        top += rowHeight;
    }
    painter.setPen(diffColour(DiffColour::Rule));
    painter.drawLine(half + 1, 0, half + 1, top);
    painter.drawRect(0, 0, width() - 1, top);
}

} // namespace velmora
