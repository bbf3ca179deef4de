#pragma once

class QPoint;

namespace velmora {

class SessionTabs;

/// Opens the menu of a tab at `place` on the screen: closing it or the others, its paths, its folders.
void openTabMenu(SessionTabs &tabs, int index, const QPoint &place);

} // namespace velmora
