#include "Tools/PasswordFile.h"

#include "Tools/CommandError.h"

#include <cerrno>
#include <cstring>
#include <fstream>

namespace orvapp {

namespace {

constexpr std::streamsize LONGEST_PASSWORD = 1000;

} // namespace

std::string readPassword(const std::string& path) {
    if (path.empty()) {
        return "";
    }
    std::ifstream file(path);
    std::string password(LONGEST_PASSWORD + 1, '\0');
    if (!file) {
        throw CommandError("cannot open the password file \"" + path + "\": " + std::strerror(errno));
    }
    file.read(password.data(), LONGEST_PASSWORD + 1);
    password.resize(std::size_t(file.gcount()));
    password.resize(std::min(password.find('\n'), password.size()));
    if (password.ends_with('\r')) {
        password.pop_back();
    }
    if (password.empty() || password.size() > LONGEST_PASSWORD) {
        throw CommandError("the first line of the password file \"" + path + "\" has to be the password, of up to " +
                           std::to_string(LONGEST_PASSWORD) + " bytes");
    }
    return password;
}

} // namespace orvapp
