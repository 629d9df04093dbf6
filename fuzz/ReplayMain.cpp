#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesOf(const fs::path& folder)
{
    std::vector<fs::path> files;
    std::error_code refusal;
    for (fs::directory_iterator entry(folder, refusal), end; entry != end; entry.increment(refusal)) {
        if (entry->is_regular_file())
            files.push_back(entry->path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool replay(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    if (!stream)
        return false;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return true;
}

} // namespace

/// Runs the fuzzer once over every file of the folder given: what a compiler without a fuzzing engine has of it.
/// It fails on a folder that is missing or empty, so that a corpus that went astray is noticed. It makes no application
/// object, as the engine's own main makes none.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s CORPUS-FOLDER\n", argv[0]);
        return 2;
    }
    const std::vector<fs::path> files = filesOf(argv[1]);
    for (const fs::path& file : files) {
        if (!replay(file)) {
            std::fprintf(stderr, "cannot read %s\n", file.c_str());
            return 1;
        }
    }
    std::printf("%zu inputs\n", files.size());
    return files.empty() ? 1 : 0;
}
