#include "platform/native/kernel/file_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

FileBytes ReadWholeFile(const char *path, size_t *size)
{
    *size = 0;
    // A pipe of that name must not make the program wait.
    const int file = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return nullptr;
    struct stat status;
    FileBytes bytes;
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0)
        bytes.reset(static_cast<uint8_t *>(malloc(static_cast<size_t>(status.st_size))));
    while (bytes && *size < static_cast<size_t>(status.st_size)) {
        const ssize_t got =
            read(file, bytes.get() + *size, static_cast<size_t>(status.st_size) - *size);
        if (got <= 0)
            break;
        *size += static_cast<size_t>(got);
    }
    close(file);
    return bytes;
}
