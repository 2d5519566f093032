#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace consolidator {

/// Closes a stdio stream that is owned by a StdioFile.
struct StdioCloser {
  void operator()(std::FILE* stream) const { static_cast<void>(std::fclose(stream)); }
};

/// An owned stdio stream, or none.
using StdioFile = std::unique_ptr<std::FILE, StdioCloser>;

/// Opens a file as `fopen` does; none when that fails. Where `fopen` waits for the other end of a
/// named pipe, so does this. Throws std::bad_alloc when there is no memory for a stream.
StdioFile openStdioFile(const std::string& path, const char* mode);

/// Opens a file for reading ("r") or writing ("w") like openStdioFile(), but without waiting: a
/// named pipe that nobody reads cannot be opened for writing, and one that nobody writes to is
/// empty.
StdioFile openStdioFileAtOnce(const std::string& path, const char* mode);

/// Waits up to a second for the first bytes of a stream or its end; returns false if neither comes.
/// Files have them at once, pipes and terminals may never.
bool awaitBytes(std::FILE* stream);

/// Whether `size` bytes can be read from the stream's position on. Reads the last one of them,
/// since pseudo files may hold less than their size says. Moves the position.
bool holdsBytes(std::FILE* stream, std::uint64_t size);

/// Copies up to `size` bytes from one position to the other, in little memory. Returns how many
/// there were to copy, however many `to` took.
std::uint32_t copyBytes(std::FILE* from, std::FILE* to, std::uint32_t size);

}  // namespace consolidator
