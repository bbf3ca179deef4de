#pragma once

#include <QObject>

namespace velmora {

/// Lets the window system show the titles of windows and dialogs as they were set: the toolkit would put the program's
/// name behind each. Watches the whole application while it lives.
class PlainTitles final : public QObject {
    Q_OBJECT
public:
    explicit PlainTitles(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace velmora
