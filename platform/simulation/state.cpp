#include "platform/simulation/state.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/device_file.h"

namespace
{

constexpr std::size_t kNameSize = 128;

void devicePathOf(const char* name, char (&path)[kNameSize])
{
    std::snprintf(path, sizeof path, "/sim/%s", name);
}

void makeFoldersOf(const char* path)
{
    char folder[kNameSize];
    for (const char* slash = std::strchr(path + 1, '/'); slash != nullptr; slash = std::strchr(slash + 1, '/')) {
        std::snprintf(folder, sizeof folder, "%.*s", static_cast<int>(slash - path), path);
        mkdir(DeviceFile(folder).path(), S_IRWXU);
    }
}

} // namespace

bool simReadText(const char* name, char* buffer, std::size_t size, const char* fallback)
{
    char path[kNameSize];
    devicePathOf(name, path);
    FILE* file = std::fopen(DeviceFile(path).path(), "re");
    const bool found = file != nullptr && std::fgets(buffer, static_cast<int>(size), file) != nullptr;
    if (found)
        buffer[std::strcspn(buffer, "\n")] = '\0';
    else
        std::snprintf(buffer, size, "%s", fallback);
    if (file != nullptr)
        std::fclose(file);
    return found;
}

int simReadNumber(const char* name, int fallback)
{
    char text[32];
    return simReadText(name, text, sizeof text, "") ? static_cast<int>(std::strtol(text, nullptr, 10)) : fallback;
}

bool simWriteText(const char* name, const char* text)
{
    // Write a temporary file and rename it, so that a reader in another process never finds half a value.
    char path[kNameSize];
    char draftPath[kNameSize];
    devicePathOf(name, path);
    std::snprintf(draftPath, sizeof draftPath, "/tmp/.state.%d", static_cast<int>(getpid()));
    makeFoldersOf(path);
    const DeviceFile draft(draftPath);
    FILE* file = std::fopen(draft.path(), "we");
    if (file == nullptr)
        return false;
    const bool written = std::fprintf(file, "%s\n", text) > 0;
    return std::fclose(file) == 0 && written && std::rename(draft.path(), DeviceFile(path).path()) == 0;
}

bool simWriteNumber(const char* name, int value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%d", value);
    return simWriteText(name, text);
}
