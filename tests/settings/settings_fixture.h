#pragma once

#include "settings/dialogs/text_session_settings_dialog.h"
#include "support/scripted_dialogs.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QTest>

namespace velmora::test {

/// The settings dialog of a text comparison on the screen, with hands for its controls, which go by object name.
class SettingsFixture {
public:
    explicit SettingsFixture(const TextSessionOptions &options = {}, int tab = TextSessionSettingsDialog::Specs)
        : dialog(options, tab)
    {
        dialog.open();
    }

    template <typename Widget>
    Widget &get(const char *name, QWidget *in = nullptr)
    {
        auto *widget = (in ? in : &dialog)->findChild<Widget *>(QLatin1String(name));
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
        const QList<QDialog *> windows = dialog.findChildren<QDialog *>();
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

    ScriptedDialogs answers;
    TextSessionSettingsDialog dialog;
};

} // namespace velmora::test
