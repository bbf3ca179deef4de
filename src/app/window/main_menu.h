#pragma once

namespace velmora {

class SessionTabs;
class Tarnwick;

/// Fills the window's menu bar. Every entry goes to a slot of the window or to the session in front.
void buildMainMenu(Tarnwick &window, SessionTabs &tabs);

} // namespace velmora
