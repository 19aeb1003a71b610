#include <expat.h>

#include <string>

// A library with the dependencies of ours and nothing to do when it is loaded.

extern "C" __attribute__((visibility("default"))) const char* emptyLibraryText(std::string& text)
{
    text = XML_ExpatVersion();
    return text.c_str();
}
