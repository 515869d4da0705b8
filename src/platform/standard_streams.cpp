#include "platform/standard_streams.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace lore {

void PrepareStandardStreams() {
    for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
        // The lowest free number is given out, and those below are open.
        if (::fcntl(number, F_GETFD) < 0 && errno == EBADF)
            ::open("/dev/null", number == STDERR_FILENO ? O_WRONLY : O_RDONLY);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace lore
