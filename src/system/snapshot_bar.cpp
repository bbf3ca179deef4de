#include "system/snapshot_bar.h"

#include "session/translate.h"

namespace velmora {

SnapshotBar::SnapshotBar(const QString &saveHint, QWidget *session) : ListBar(session)
{
    addCompare(Velmora::tr("Compare the two sides"));
    m_compareHint = compare->toolTip();
    addCancel(Velmora::tr("Cancel what is being done"));
    addSeparator();
    addListCommands();
    addSides(saveHint);
    refreshTheme();
}

void SnapshotBar::addSides(const QString &saveHint)
{
    const auto beside = [this](const char *name, const QString &text, const char *icon, const QString &hint,
                               const QKeySequence &key) {
        return add({name, text, QLatin1String(icon), {key}, hint, false});
    };
    left.capture =
        beside("captureLeftAction", Velmora::tr("Capture"), "capture.png",
               Velmora::tr("Capture the current state of this system as the left side"), Qt::CTRL | Qt::Key_1);
    right.capture =
        beside("captureRightAction", Velmora::tr("Capture"), "capture.png",
               Velmora::tr("Capture the current state of this system as the right side"), Qt::CTRL | Qt::Key_2);
    left.load = beside("loadLeftAction", Velmora::tr("Load left side..."), "load.png",
                       Velmora::tr("Load a snapshot file as the left side"), Qt::CTRL | Qt::Key_O);
    right.load = beside("loadRightAction", Velmora::tr("Load right side..."), "load.png",
                        Velmora::tr("Load a snapshot file as the right side"), Qt::CTRL | Qt::SHIFT | Qt::Key_O);
    left.save = beside("saveLeftAction", Velmora::tr("Save left side..."), "save.png",
                       Velmora::tr("Save the left side as a snapshot file"), Qt::CTRL | Qt::Key_S);
    right.save = beside("saveRightAction", Velmora::tr("Save right side..."), "save.png",
                        Velmora::tr("Save the right side as a snapshot file"), Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    for (QAction *save : {left.save, right.save})
        save->setToolTip(save->toolTip() + u'\n' + saveHint);
    focusLeft = add({"focusLeftAction", Velmora::tr("Left side"), {}, {Qt::ALT | Qt::Key_L}});
    focusRight = add({"focusRightAction", Velmora::tr("Right side"), {}, {Qt::ALT | Qt::Key_R}});
}

void SnapshotBar::allowCompare(bool allowed, const QString &reason)
{
    compare->setEnabled(allowed);
    compare->setToolTip(reason.isEmpty() ? m_compareHint : reason);
}

} // namespace velmora
