#include "app/options/options_dialog.h"

#include "app/options/text_appearance_fields.h"
#include "app/options/theme_preview.h"
#include "app/start/locale.h"
#include "core/settings_store.h"
#include "session/dialogs.h"
#include "session/translate.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>

namespace velmora {

namespace {

constexpr int pageListWidth = 140;
constexpr QSize usualSize(620, 440);

QString restartNote()
{
    return Velmora::tr("Restart Velmora for a full language update (menus, home, new tabs).");
}

QLabel *makeHeader(const QString &text)
{
    auto *header = new QLabel(text);
    QFont font = header->font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    font.setWeight(QFont::DemiBold);
    header->setFont(font);
    return header;
}

} // namespace

OptionsDialog::OptionsDialog(bool dark, ShellMenu menu, QWidget *parent)
    : QDialog(parent),
      m_menu(std::move(menu)),
      m_theme(new QComboBox),
      m_language(new QComboBox),
      m_explorer(new QCheckBox(Velmora::tr("Add Velmora to Explorer context menu"))),
      m_dark(dark)
{
    setWindowTitle(Velmora::tr("Options"));

    auto *list = new QListWidget;
    list->setObjectName(QStringLiteral("optionPages"));
    list->setFixedWidth(pageListWidth);
    list->setSpacing(2);
    auto *pages = new QStackedWidget;
    list->addItem(Velmora::tr("Appearance"));
    pages->addWidget(makeAppearancePage());
    list->addItem(Velmora::tr("Integration"));
    pages->addWidget(makeIntegrationPage());
    connect(list, &QListWidget::currentRowChanged, pages, &QStackedWidget::setCurrentIndex);
    list->setCurrentRow(0);

    auto *cancel = new QPushButton(Velmora::tr("Cancel"));
    auto *apply = new QPushButton(Velmora::tr("Apply"));
    cancel->setObjectName(QStringLiteral("optionsCancel"));
    apply->setObjectName(QStringLiteral("optionsApply"));
    apply->setDefault(true);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(apply, &QPushButton::clicked, this, &OptionsDialog::apply);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(apply);
    buttons->addWidget(cancel);
    auto *centre = new QHBoxLayout;
    centre->setSpacing(16);
    centre->addWidget(list);
    centre->addWidget(pages, 1);
    auto *whole = new QVBoxLayout(this);
    whole->setSpacing(12);
    whole->addLayout(centre, 1);
    whole->addLayout(buttons);
    // Wrapped texts have no height until they have a width.
    const int width = std::max(usualSize.width(), sizeHint().width());
    resize(width, std::max(usualSize.height(), whole->totalHeightForWidth(width)));
}

void OptionsDialog::reject()
{
    if (isDarkChosen() != m_dark)
        Q_EMIT themeChosen(m_dark);
    QDialog::reject();
}

QWidget *OptionsDialog::makeAppearancePage()
{
    m_theme->setObjectName(QStringLiteral("optionTheme"));
    m_theme->addItem(Velmora::tr("Light"));
    m_theme->addItem(Velmora::tr("Dark"));
    m_theme->setCurrentIndex(m_dark ? 1 : 0);
    connect(m_theme, &QComboBox::currentIndexChanged, this, [this] { Q_EMIT themeChosen(isDarkChosen()); });

    m_language->setObjectName(QStringLiteral("optionLanguage"));
    m_language->addItem(QStringLiteral("English"), QStringLiteral("en_US"));
    m_language->addItem(QStringLiteral("简体中文"), QStringLiteral("zh_CN"));
    m_language->setCurrentIndex(m_language->findData(currentLocale()));

    auto *note = new QLabel(restartNote());
    note->setWordWrap(true);
    note->setForegroundRole(QPalette::PlaceholderText);

    auto *preview = new QGroupBox(Velmora::tr("Preview"));
    auto *previewLayout = new QVBoxLayout(preview);
    previewLayout->addWidget(new ThemePreview);

    auto *choices = new QFormLayout;
    choices->addRow(Velmora::tr("Theme:"), m_theme);
    choices->addRow(Velmora::tr("Language:"), m_language);
    m_texts = new TextAppearanceFields(*choices, this);
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(12);
    column->addWidget(makeHeader(Velmora::tr("Theme, colors, and fonts")));
    column->addLayout(choices);
    column->addWidget(note);
    column->addWidget(preview);
    column->addStretch(1);
    return page;
}

QWidget *OptionsDialog::makeIntegrationPage()
{
    m_explorer->setObjectName(QStringLiteral("optionExplorer"));
    m_explorer->setEnabled(m_menu.isThere());
    m_explorer->setChecked(m_menu.isThere() && m_menu.isRegistered());

    auto *explanation = new QLabel(Velmora::tr(
        "When enabled, Explorer shows:\n  · Velmora: set as left side\n  · Velmora: set as right side\nSet left "
        "on one item, then right on another to open a compare tab.\nStored under HKCU (no admin). Uncheck to "
        "remove."));
    explanation->setWordWrap(true);

    auto *group = new QGroupBox(Velmora::tr("Explorer integration"));
    auto *lines = new QVBoxLayout(group);
    lines->setSpacing(10);
    lines->addWidget(m_explorer);
    lines->addWidget(explanation);
    if (!m_menu.folder.isEmpty()) {
        auto *here = new QLabel(Velmora::tr("On this system: entries for Dolphin, Nautilus, Nemo and PCManFM, an entry "
                                            "in the menu of applications, and the file types of sessions and "
                                            "workspaces, all kept below %1.")
                                    .arg(QDir::toNativeSeparators(m_menu.folder)));
        here->setTextFormat(Qt::PlainText);
        here->setWordWrap(true);
        lines->addWidget(here);
    }
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(group);
    column->addStretch(1);
    return page;
}

bool OptionsDialog::isDarkChosen() const
{
    return m_theme->currentIndex() == 1;
}

void OptionsDialog::apply()
{
    m_texts->save(); // before sessions are told of the theme, which look for this, too
    applyTheme();
    applyLanguage();
    if (applyExplorerMenu())
        accept();
}

void OptionsDialog::applyTheme()
{
    m_dark = isDarkChosen();
    InterfaceSettings().setValue(QStringLiteral("theme"), m_dark ? 1 : 0);
    Q_EMIT themeChosen(m_dark);
}

void OptionsDialog::applyLanguage()
{
    const QString before = currentLocale();
    // A locale that is not on offer stays when nothing was chosen in its place.
    if (m_language->currentIndex() >= 0)
        setCurrentLocale(m_language->currentData().toString());
    saveLocale();
    installTranslator();
    if (currentLocale() != before)
        Dialogs::instance().tell(parentWidget(), Dialogs::Tone::Information, Velmora::tr("Options"), restartNote());
}

bool OptionsDialog::applyExplorerMenu()
{
    if (!m_menu.isThere() || m_explorer->isChecked() == m_menu.isRegistered())
        return true;
    if (!m_explorer->isChecked())
        return m_menu.unregisterMenu();
    if (m_menu.registerMenu(QCoreApplication::applicationFilePath()))
        return true;
    Dialogs::instance().tell(
        this, Dialogs::Tone::Warning, Velmora::tr("Registration failed"),
        Velmora::tr("Cannot register the Explorer context menu. Check permissions and the executable path."));
    return false;
}

} // namespace velmora
