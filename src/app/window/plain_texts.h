#pragma once

#include <QObject>

class QWidget;

namespace velmora {

/// Shows texts as they were set, wherever the toolkit would make something else of them: behind each window title it
/// puts the program's name, and labels and tool tips that look like markup, as the name of a file may, it renders. A
/// label for markup says so (`Qt::RichText`). Watches the whole application while it lives.
class PlainTexts final : public QObject {
    Q_OBJECT
public:
    explicit PlainTexts(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace velmora
