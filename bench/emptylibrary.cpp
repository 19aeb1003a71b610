#include <expat.h>
#include <unicode/ucol.h>
#include <unicode/uversion.h>

#include <string>

// A library with the dependencies of ours and nothing to do when it is loaded.

extern "C" __attribute__((visibility("default"))) const char* emptyLibraryText(std::string& text)
{
    UVersionInfo version{};
    u_getVersion(version);
    // So that the linker keeps each of the libraries.
    text = XML_ExpatVersion() + std::string(version[0] + ucol_countAvailable() > 0 ? "." : "");
    return text.c_str();
}
