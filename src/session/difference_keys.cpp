#include "session/difference_keys.h"

namespace velmora {

namespace {

struct KeyRow {
    QLatin1String action;
    QList<QKeySequence> keys;
};

} // namespace

QList<QKeySequence> differenceKeys(QLatin1String action)
{
    static const KeyRow rows[] = {
        {QLatin1String("compareAction"), {Qt::Key_F5}},
        {QLatin1String("refreshAction"), {Qt::Key_F5}},
        {QLatin1String("cancelAction"), {Qt::Key_Escape}},
        {QLatin1String("previousAction"), {Qt::SHIFT | Qt::Key_F8, Qt::ALT | Qt::Key_Up}},
        {QLatin1String("nextAction"), {Qt::Key_F8, Qt::ALT | Qt::Key_Down}},
        {QLatin1String("showAllAction"), {Qt::CTRL | Qt::SHIFT | Qt::Key_A, Qt::ALT | Qt::Key_1}},
        {QLatin1String("showDifferencesAction"), {Qt::CTRL | Qt::Key_D, Qt::ALT | Qt::Key_2}},
        {QLatin1String("showIdenticalAction"), {Qt::CTRL | Qt::SHIFT | Qt::Key_D, Qt::ALT | Qt::Key_3}},
        {QLatin1String("findAction"), {Qt::CTRL | Qt::Key_F}},
        {QLatin1String("focusFilterAction"), {Qt::CTRL | Qt::Key_F}},
        {QLatin1String("copyAction"), {QKeySequence(QKeySequence::Copy)}},
        {QLatin1String("copyToRightAction"), {Qt::ALT | Qt::Key_Right}},
        {QLatin1String("copyToLeftAction"), {Qt::ALT | Qt::Key_Left}},
        {QLatin1String("showDetailsAction"), {Qt::Key_F9}},
        {QLatin1String("lineDetailAction"), {Qt::Key_F9}},
        {QLatin1String("switchPaneAction"), {Qt::Key_F6}},
        {QLatin1String("swapAction"), {Qt::CTRL | Qt::Key_F6}},
        {QLatin1String("exportAction"), {Qt::CTRL | Qt::SHIFT | Qt::Key_E}},
        {QLatin1String("settingsAction"), {Qt::CTRL | Qt::Key_Comma}},
        {QLatin1String("rulesAction"), {Qt::CTRL | Qt::Key_Comma}},
    };
    for (const KeyRow &row : rows) {
        if (row.action == action)
            return row.keys;
    }
    return {};
}

} // namespace velmora
