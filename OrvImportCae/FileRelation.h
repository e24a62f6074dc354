#pragma once

namespace orv::imp::cae {

/// What several files that are opened together are to each other, see DataSourceCae::openFiles().
enum class FileRelation {
    FROM_CONTENTS, ///< What their meshes and states tell.
    STEPS,         ///< Each brings states of its own.
    PIECES         ///< Each brings parts of its own to the same states.
};

} // namespace orv::imp::cae
