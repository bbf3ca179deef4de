#include "app/help/about.h"
#include "app/help/legend_dialog.h"
#include "app/home/home_page.h"
#include "app/home/home_tile.h"
#include "app/library/record_dialog.h"
#include "app/options/options_dialog.h"
#include "app/start/locale.h"
#include "session/theme.h"
#include "support/test_main.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>

using namespace velmora;

namespace {

/// What a widget shows less of than there is; empty when it shows all.
QString cutIn(const QWidget &widget)
{
    const auto tooSmall = [&widget](const QString &text, const QSize &needed) {
        return QStringLiteral("%1 \"%2\": %3 x %4, needs %5 x %6")
            .arg(QLatin1String(widget.metaObject()->className()), text)
            .arg(widget.width())
            .arg(widget.height())
            .arg(needed.width())
            .arg(needed.height());
    };
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        const QSize needed = label->wordWrap()
                                 ? QSize(label->minimumSizeHint().width(), label->heightForWidth(label->width()))
                                 : label->sizeHint();
        if (label->width() < needed.width() || label->height() < needed.height())
            return tooSmall(label->text(), needed);
    } else if (const auto *tile = qobject_cast<const HomeTile *>(&widget)) {
        const QSize needed(tile->fontMetrics().horizontalAdvance(tile->text()) + 14, tile->sizeHint().height());
        if (tile->width() < needed.width() || tile->height() < needed.height())
            return tooSmall(tile->text(), needed);
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        const QSize needed = button->sizeHint();
        const bool isTile = qobject_cast<const TileButton *>(button); // elides its paths, and says them in its tip
        if (!isTile && !button->text().isEmpty() &&
            (button->width() < needed.width() || button->height() < needed.height()))
            return tooSmall(button->text(), needed);
    } else if (const auto *box = qobject_cast<const QComboBox *>(&widget)) {
        if (box->width() < box->minimumSizeHint().width() || box->height() < box->minimumSizeHint().height())
            return tooSmall(box->currentText(), box->minimumSizeHint());
    }
    return {};
}

QStringList cutBelow(QWidget &window)
{
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return {QStringLiteral("not shown")};
    QCoreApplication::sendPostedEvents();
    QStringList result;
    const auto widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const QString cut = widget->isVisible() ? cutIn(*widget) : QString();
        if (!cut.isEmpty())
            result.append(cut);
    }
    return result;
}

} // namespace

/// The windows of the shell in both languages and at two text sizes: no label and no button shows less than its text.
class NoTextCutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_font = QApplication::font(); }

    void cleanup()
    {
        QApplication::setFont(m_font);
        setCurrentLocale({});
        installTranslator();
    }

    void everythingIsReadable()
    {
        for (const char *locale : {"en_US", "zh_CN"}) {
            for (const int percent : {100, 150})
                checkAll(QLatin1String(locale), percent);
        }
    }

private:
    void checkAll(const QString &locale, int percent) const
    {
        setCurrentLocale(locale);
        installTranslator();
        QFont font = m_font;
        font.setPointSizeF(9.0 * percent / 100);
        QApplication::setFont(font);

        HomePage home;
        home.resize(1050, 740);
        QCOMPARE(cutBelow(home).join(u'\n'), QString());
        home.resize(820, 600);
        QCOMPARE(cutBelow(home).join(u'\n'), QString());

        OptionsDialog options(false, desktopShellMenu(QStringLiteral("/home/somebody/.local/share")));
        QCOMPARE(cutBelow(options).join(u'\n'), QString());
        options.findChild<QListWidget *>(QStringLiteral("optionPages"))->setCurrentRow(1);
        QCOMPARE(cutBelow(options).join(u'\n'), QString());

        LegendDialog legend;
        QCOMPARE(legend.findChildren<QLabel *>().size(), 3 + 2 * 12 + 2 * 9); // headings, a row for each state and sign
        QCOMPARE(cutBelow(legend).join(u'\n'), QString());

        const SessionRecord record{QStringLiteral("name"), QStringLiteral("merge"), {}, {}, {}};
        const std::unique_ptr<RecordDialog> saving(RecordDialog::forSaving(record, nullptr));
        QCOMPARE(cutBelow(*saving).join(u'\n'), QString());
        const std::unique_ptr<RecordDialog> editing(RecordDialog::forEditing(record, nullptr));
        QCOMPARE(cutBelow(*editing).join(u'\n'), QString());

        QWidget window;
        showAbout(&window);
        QCOMPARE(cutBelow(*window.findChild<QMessageBox *>()).join(u'\n'), QString());
    }

    QFont m_font;
};

VELMORA_TEST(NoTextCutTest)
#include "no_text_cut_test.moc"
