// Stands in for PowerShell: says what it was told to say, in the manner that the environment asks for.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

namespace {

void copy(std::FILE *from, std::FILE *to)
{
    char block[4096];
    for (std::size_t size = 0; (size = std::fread(block, 1, sizeof block, from)) > 0;)
        std::fwrite(block, 1, size, to);
}

bool copyFile(const char *path, std::FILE *to)
{
    std::FILE *from = path ? std::fopen(path, "rb") : nullptr;
    if (!from)
        return false;
    copy(from, to);
    std::fclose(from);
    return true;
}

} // namespace

/// VELMORA_FAKE_OUTPUT names the file that it writes to its output, VELMORA_FAKE_CALL the one to which it adds its
/// arguments, one in a line. With VELMORA_FAKE_ENDLESS it never ends; with VELMORA_FAKE_ECHO it repeats its input.
int main(int argc, char *argv[])
{
    if (const char *path = std::getenv("VELMORA_FAKE_CALL")) {
        if (std::FILE *call = std::fopen(path, "ab")) {
            for (int i = 1; i < argc; ++i)
                std::fprintf(call, "%s\n", argv[i]);
            std::fclose(call);
        }
    }
    if (std::getenv("VELMORA_FAKE_ENDLESS")) {
        for (;;)
            std::this_thread::sleep_for(std::chrono::seconds(1)); // waits for nothing
    }
    if (std::getenv("VELMORA_FAKE_ECHO")) {
        copy(stdin, stdout);
        return 3;
    }
    if (copyFile(std::getenv("VELMORA_FAKE_OUTPUT"), stdout))
        return 0;
    std::fputs("Get-CimInstance: access denied\n", stderr);
    return 1;
}
