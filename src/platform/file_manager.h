#pragma once

#include <QString>

#include <functional>

class QObject;

namespace velmora {

/// Opens the system's file manager with the file or folder `path`, absolute, selected, or, where it cannot select, with
/// the folder that it lies in. Returns at once. `failed` is called later, on the thread of `context` and not once that
/// is gone, when there is no file manager to be had.
void showInFileManager(const QString &path, QObject &context, std::function<void()> failed);

} // namespace velmora
