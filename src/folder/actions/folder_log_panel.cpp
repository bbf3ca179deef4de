#include "folder/actions/folder_log_panel.h"

#include "core/safe_file.h"
#include "session/dialogs.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QToolButton>

#include <algorithm>

namespace velmora {

FolderLogPanel::FolderLogPanel(QWidget *parent)
    : QWidget(parent),
      m_text(new QPlainTextEdit(this)),
      m_copy(new QToolButton(this)),
      m_save(new QToolButton(this)),
      m_close(new QToolButton(this))
{
    m_text->setObjectName(QStringLiteral("folderLog"));
    m_text->setReadOnly(true);
    m_text->setMaximumBlockCount(mostLines);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->setAccessibleName(Velmora::tr("Action log"));
    m_text->setTabChangesFocus(true);

    const auto prepare = [](QToolButton *button, const QString &hint) {
        button->setAutoRaise(true);
        button->setToolTip(hint);
        button->setAccessibleName(hint);
        button->setIconSize(QSize(16, 16));
    };
    prepare(m_copy, Velmora::tr("Copy the log"));
    prepare(m_save, Velmora::tr("Save the log..."));
    prepare(m_close, Velmora::tr("Hide the log"));
    connect(m_copy, &QToolButton::clicked, this, [this] { QGuiApplication::clipboard()->setText(text()); });
    connect(m_save, &QToolButton::clicked, this, &FolderLogPanel::save);
    connect(m_close, &QToolButton::clicked, this, &FolderLogPanel::closeWanted);

    auto *title = new QLabel(Velmora::tr("Action log"), this);
    QFont font = title->font();
    font.setWeight(QFont::DemiBold);
    title->setFont(font);
    auto *head = new QHBoxLayout;
    head->setContentsMargins(8, 2, 4, 2);
    head->setSpacing(2);
    head->addWidget(title, 1);
    head->addWidget(m_copy);
    head->addWidget(m_save);
    head->addWidget(m_close);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(head);
    column->addWidget(m_text, 1);
    refreshTheme();
}

void FolderLogPanel::addLines(const QStringList &lines)
{
    if (!lines.isEmpty())
        m_text->appendPlainText(lines.mid(std::max<qsizetype>(0, lines.size() - mostLines)).join(u'\n'));
}

QString FolderLogPanel::text() const
{
    return m_text->toPlainText();
}

void FolderLogPanel::save()
{
    Dialogs::instance().saveFile(this, Velmora::tr("Save the log"), QStringLiteral("folder_log.txt"),
                                 Velmora::tr("Text files (*.txt)"), [this](const QString &path) {
                                     const SaveResult saved = saveFile(path, (text() + u'\n').toUtf8());
                                     if (!saved.ok())
                                         Dialogs::instance().tell(this, Dialogs::Tone::Warning,
                                                                  Velmora::tr("Save the log"), saved.error);
                                 });
}

void FolderLogPanel::refreshTheme()
{
    m_copy->setIcon(themedIcon(QStringLiteral("copy.png")));
    m_save->setIcon(themedIcon(QStringLiteral("save.png")));
    m_close->setIcon(themedIcon(QStringLiteral("close.png")));
}

} // namespace velmora
