#pragma once

#include <QObject>

class QLabel;

namespace velmora {

class PaneScene;
class StatusLine;

/// Where a person is in a text, in the status line: the caret's place, how much is selected, and whether the file may
/// be written.
class TextEditPlace final : public QObject {
    Q_OBJECT
public:
    /// Adds its facts to `foot` and follows the caret of `scene`; both outlive this object.
    TextEditPlace(StatusLine &foot, const PaneScene &scene, QObject *parent);

    /// Shows the place in a text that has come in.
    void show();
    void setWriteProtected(bool isProtected);

private:
    void showSelection();

    const PaneScene &m_scene;
    QLabel *m_protected;
    QLabel *m_selection;
    QLabel *m_place;
};

} // namespace velmora
