#pragma once

namespace velmora {

/// Which rows of a comparison a view shows, apart from what filters hide.
enum class RowsView {
    All,
    Differences, ///< what differs, or may do so once it is known, and the folders on the way to it
    Same,        ///< what is the same, and the folders on the way to it
};

} // namespace velmora
