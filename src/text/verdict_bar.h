#pragma once

#include "text/verdict.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace velmora {

/// A line above the texts that says what was found, with a button for the way on; hidden while there is nothing to say.
class VerdictBar final : public QWidget {
    Q_OBJECT
public:
    explicit VerdictBar(QWidget *parent = nullptr);

    void show(const Verdict &verdict);

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void offerTaken(); ///< unimportant differences are to count from now on, or no longer

private:
    QLabel *m_text;
    QPushButton *m_offer;
    bool m_warns = false;
};

} // namespace velmora
