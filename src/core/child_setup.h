#pragma once

class QProcess;

namespace velmora {

struct ChildCall;

/// Gives a process that has not been started its program, arguments, folder and surroundings. For the room itself.
void setUpChild(QProcess &process, const ChildCall &call);

} // namespace velmora
