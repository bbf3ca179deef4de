#pragma once

#include "settings/dialogs/text_session_settings_dialog.h"
#include "support/scripted_dialogs.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QHash>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include <utility>

namespace velmora::test {

/// The defaults as the dialog stores them: file types by the words that it shows for them.
inline TextSessionOptions acceptedDefaults()
{
    TextSessionOptions options;
    options.leftFileType = options.rightFileType = QStringLiteral("Everything else");
    return options;
}

/// A settings dialog on the screen, with hands for its controls, which go by object name.
template <typename Dialog>
class SettingsHands {
public:
    template <typename... Arguments>
    explicit SettingsHands(Arguments &&...arguments) : dialog(std::forward<Arguments>(arguments)...)
    {
        dialog.open();
    }

    template <typename Widget>
    Widget &get(const char *name, QWidget *in = nullptr)
    {
        auto *widget = (in ? in : &dialog)->template findChild<Widget *>(QLatin1String(name));
        if (!widget)
            qFatal("no control is named %s", name);
        return *widget;
    }

    void click(const char *name, QWidget *in = nullptr) { get<QAbstractButton>(name, in).click(); }
    void type(const char *name, const QString &text, QWidget *in = nullptr) { get<QLineEdit>(name, in).setText(text); }
    /// Triggers an entry of the menu of a button.
    void choose(const char *button, const QString &action)
    {
        QMenu *menu = get<QPushButton>(button).menu();
        Q_EMIT menu->aboutToShow();
        menu->findChild<QAction *>(action)->trigger();
    }

    /// The window that a control has opened over the settings.
    QDialog *opened()
    {
        const QList<QDialog *> windows = dialog.template findChildren<QDialog *>();
        for (QDialog *window : windows) {
            if (window->isVisible())
                return window;
        }
        return nullptr;
    }

    [[nodiscard]] QString preset() { return get<QLabel>("settingsPreset").text(); }

    /// The rows of a list as a person reads them.
    QStringList rows(const char *list)
    {
        QStringList texts;
        const QAbstractItemModel *model = get<QListView>(list).model();
        for (int row = 0; row < model->rowCount(); ++row)
            texts.append(model->index(row, 0).data().toString());
        return texts;
    }

    void select(const char *list, int row)
    {
        auto &view = get<QListView>(list);
        view.setCurrentIndex(view.model()->index(row, 0));
        view.setFocus();
    }

    /// What answers to a key that another control in sight answers to as well, over all tabs.
    QStringList clashingMnemonics()
    {
        QStringList clashes;
        auto &tabs = get<QTabWidget>("settingsTabs");
        for (int tab = 0; tab < tabs.count(); ++tab) {
            tabs.setCurrentIndex(tab);
            QHash<QString, QString> taken;
            for (const QString &text : textsInSight()) {
                const QString key = QKeySequence::mnemonic(text).toString();
                if (!key.isEmpty() && taken.contains(key))
                    clashes.append(text);
                taken.insert(key, text);
            }
            if (taken.size() < 3)
                clashes.append(QLatin1String("no keys on tab ") + tabs.tabText(tab));
        }
        return clashes;
    }

    ScriptedDialogs answers;
    Dialog dialog;

private:
    [[nodiscard]] QStringList textsInSight() const
    {
        QStringList texts;
        for (const auto *button : dialog.template findChildren<QAbstractButton *>()) {
            if (button->isVisible())
                texts.append(button->text());
        }
        for (const auto *label : dialog.template findChildren<QLabel *>()) {
            if (label->isVisible() && label->buddy())
                texts.append(label->text());
        }
        for (const auto *box : dialog.template findChildren<QGroupBox *>()) {
            if (box->isVisible())
                texts.append(box->title());
        }
        return texts;
    }
};

/// The settings dialog of a text comparison.
class SettingsFixture : public SettingsHands<TextSessionSettingsDialog> {
public:
    explicit SettingsFixture(const TextSessionOptions &options = {}, int tab = TextSessionSettingsDialog::Specs)
        : SettingsHands(options, tab)
    {}
};

} // namespace velmora::test
