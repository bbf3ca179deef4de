#include "folder/actions/contents_results_dialog.h"

#include "session/translate.h"

#include <QFormLayout>
#include <QLabel>
#include <QListView>
#include <QLocale>
#include <QPushButton>
#include <QStringListModel>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr int usualWidth = 520;
constexpr int listHeight = 180;

void addNumber(QFormLayout &form, const QString &text, int number, const QString &name)
{
    auto *label = new QLabel(QLocale().toString(number));
    label->setObjectName(name);
    form.addRow(text, label);
}

void addNames(QVBoxLayout &column, const QString &title, const QStringList &names, const QString &objectName)
{
    if (names.isEmpty())
        return;
    auto *list = new QListView;
    list->setObjectName(objectName);
    list->setModel(new QStringListModel(names, list));
    list->setUniformItemSizes(true);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setTextElideMode(Qt::ElideMiddle);
    list->setMinimumHeight(listHeight);
    auto *label = new QLabel(title);
    label->setBuddy(list);
    column.addWidget(label);
    column.addWidget(list, 1);
}

} // namespace

ContentsResultsDialog::ContentsResultsDialog(const ContentsResults &results, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(Velmora::tr("Compare contents"));
    setModal(true);
    auto *whole = new QVBoxLayout(this);
    whole->setSpacing(10);
    if (results.cancelled)
        whole->addWidget(new QLabel(Velmora::tr("The comparison was cancelled; not all files were compared.")));
    auto *form = new QFormLayout;
    form->setHorizontalSpacing(16);
    addNumber(*form, Velmora::tr("Same:"), results.same, QStringLiteral("contentsSame"));
    addNumber(*form, Velmora::tr("Different:"), results.different, QStringLiteral("contentsDifferent"));
    addNumber(*form, Velmora::tr("On one side only:"), results.unmatched, QStringLiteral("contentsUnmatched"));
    if (results.untold > 0)
        addNumber(*form, Velmora::tr("Not compared:"), results.untold, QStringLiteral("contentsUntold"));
    whole->addLayout(form);
    if (results.untold > 0) {
        auto *why = new QLabel(Velmora::tr("A snapshot has neither the contents of these files nor their checksums; "
                                           "they stay as size and time show them."));
        why->setWordWrap(true);
        whole->addWidget(why);
    }
    addNames(*whole, Velmora::tr("Different files:"), results.differing, QStringLiteral("contentsDifferingList"));
    addNames(*whole, Velmora::tr("Files that could not be read:"), results.unreadable,
             QStringLiteral("contentsUnreadableList"));
    if (results.differing.isEmpty() && results.unreadable.isEmpty())
        whole->addStretch(1);

    auto *close = new QPushButton(Velmora::tr("Close"));
    close->setObjectName(QStringLiteral("contentsClose"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    whole->addWidget(close, 0, Qt::AlignTrailing);
    close->setFocus();
    resize(usualWidth, sizeHint().height());
}

} // namespace velmora
