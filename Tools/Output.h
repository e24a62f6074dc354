#pragma once

#include <string>
#include <string_view>

namespace orvapp {

/// Writes all of a text. A failure throws CommandError, with `name` in its text, or OutputClosed.
void writeAll(int descriptor, std::string_view text, const std::string& name);

void writeStandardOutput(std::string_view text);

/// As well as it goes: there is nowhere to tell of a failure.
void writeStandardError(std::string_view text);

/// "orvapp: ", the text without control characters, and a line end, on standard error.
void writeMessage(std::string_view text);

/// A file that appears whole or not at all.
///
/// The text goes to a temporary file beside the target, which commit() renames over it. Without commit() the temporary
/// file is removed, also when the user interrupts the command. "-" is standard output, and a target that exists and is
/// no regular file, such as a device or a pipe, is written directly. One at a time.
class OutputFile {
public:
    /// Throws CommandError when the file cannot be written there.
    explicit OutputFile(const std::string& path);
    ~OutputFile();

    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Throws CommandError or OutputClosed.
    void write(std::string_view text);

    /// Throws CommandError or OutputClosed; call it once, behind the last write.
    void commit();

private:
    void openTemporaryFile();
    void flush();
    void close();
    [[noreturn]] void failed() const;

    std::string m_name;      ///< As it was given, for messages.
    std::string m_target;    ///< The name that commit() renames to; a symbolic link is followed.
    std::string m_temporary; ///< Empty when the target is written directly.
    std::string m_buffer;
    int m_descriptor = -1;
};

} // namespace orvapp
