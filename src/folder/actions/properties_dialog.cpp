#include "folder/actions/properties_dialog.h"

#include "folder/actions/action_words.h"
#include "session/translate.h"

#include <QDateTime>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr int sideWidth = 340;

QWidget *makeSide(const QString &title, const QString &path, const QString &name)
{
    auto *text = new QLabel(propertiesText(path));
    text->setObjectName(name);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    text->setMinimumWidth(sideWidth);
    auto *side = new QGroupBox(title);
    auto *column = new QVBoxLayout(side);
    column->addWidget(text);
    return side;
}

} // namespace

QString propertiesText(const QString &path)
{
    const QFileInfo info(path);
    const QLocale locale;
    const QDateTime modified = info.lastModified();
    const QString time = locale.toString(modified.date(), QLocale::ShortFormat) + u' ' +
                         modified.time().toString(QStringLiteral("HH:mm:ss"));
    const QString size =
        info.isDir() ? Velmora::tr("<folder>") : Velmora::tr("%1 bytes").arg(locale.toString(info.size()));
    return Velmora::tr("Path: %1\nType: %2\nSize: %3\nModified: %4\nRead-only: %5")
        .arg(shownPath(path), info.isDir() ? Velmora::tr("Folder") : Velmora::tr("File"), size,
             modified.isValid() ? time : QString(), info.isWritable() ? Velmora::tr("No") : Velmora::tr("Yes"));
}

PropertiesDialog::PropertiesDialog(const QString &leftPath, const QString &rightPath, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(Velmora::tr("Properties"));
    setModal(true);
    auto *sides = new QHBoxLayout;
    sides->setSpacing(12);
    if (!leftPath.isEmpty())
        sides->addWidget(makeSide(Velmora::tr("Left"), leftPath, QStringLiteral("leftProperties")), 1);
    if (!rightPath.isEmpty())
        sides->addWidget(makeSide(Velmora::tr("Right"), rightPath, QStringLiteral("rightProperties")), 1);
    auto *close = new QPushButton(Velmora::tr("Close"));
    close->setObjectName(QStringLiteral("propertiesClose"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto *whole = new QVBoxLayout(this);
    whole->addLayout(sides, 1);
    whole->addWidget(close, 0, Qt::AlignTrailing);
    close->setFocus();
}

} // namespace velmora
