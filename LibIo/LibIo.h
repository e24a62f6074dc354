#pragma once

/// @page LibIo LibIo: files and folders
///
/// Namespace `rvf`, static functions alone. It needs LibCore. Paths are wide texts and reach the system as UTF-8.
///
/// - File opens C streams.
/// - FileSystem takes paths apart, and creates, lists, copies and deletes.

#include "LibIo/rvfFile.h"
#include "LibIo/rvfFileSystem.h"
