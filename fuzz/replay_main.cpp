// Runs the files of the given folders, and the given files, through a fuzz target: what a fuzzer found once stays a
// test where there is no fuzzer. Fails when there was nothing to run.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

/// The files below `place`, sorted by path so that a run can be repeated; `place` itself when it is a file.
std::vector<fs::path> filesOf(const fs::path& place)
{
    if (fs::is_regular_file(place)) {
        return {place};
    }
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(place)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

void run(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw fs::filesystem_error("cannot be read", file, std::make_error_code(std::errc::io_error));
    }
    const std::string bytes(std::istreambuf_iterator<char>(stream), {});
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

std::size_t runAll(const std::vector<fs::path>& places)
{
    std::size_t count = 0;
    for (const fs::path& place : places) {
        for (const fs::path& file : filesOf(place)) {
            // Flushed before the run: when the target crashes, the last line names the input.
            std::cout << file.string() << std::endl;
            run(file);
            ++count;
        }
    }
    return count;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        const std::size_t count = runAll(std::vector<fs::path>(argv + 1, argv + argc));
        std::cout << count << " inputs replayed\n";
        return count == 0 ? 1 : 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
