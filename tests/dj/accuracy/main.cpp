#include "tests/dj/accuracy/Table.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string_view>

namespace {

int write(const char* path, const std::string& page)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << page << std::flush;
    return file.good() ? 0 : 1;
}

int check(const char* path, const std::string& page)
{
    std::ifstream file(path, std::ios::binary);
    const std::string stored{std::istreambuf_iterator<char>(file), {}};
    if (stored == page)
        return 0;
    std::fprintf(stderr, "%s is not what the program hears today, which is:\n%s", path, page.c_str());
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    const std::string_view verb = argc == 3 ? argv[1] : "";
    if (verb == "write")
        return write(argv[2], orvane::test::accuracyPage());
    if (verb == "check")
        return check(argv[2], orvane::test::accuracyPage());
    std::fprintf(stderr, "orvane-dj-accuracy write FILE, or check FILE\n");
    return 1;
}
