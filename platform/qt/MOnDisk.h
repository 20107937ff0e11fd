#pragma once

/// Whether the disk has what was written.
namespace MOnDisk {

/// Waits until the disk has taken an open file's content, and asks what closing the file would
/// say. A file system that cannot wait for its disk is no failure.
bool Wait(int p_iFile);

/// The same of a folder's names; p_iFolder may be open as a mere path.
bool WaitForFolder(int p_iFolder);

}  // namespace MOnDisk
