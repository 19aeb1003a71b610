#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>

// For tests that read dates: which characters are letters is asked of the C library, so every script's AM and PM
// markers are found only under a character type that knows them; the library itself never chooses one.
int main(int argc, char** argv)
{
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) {
        std::fputs("there is no character type C.UTF-8\n", stderr);
        return 1;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
