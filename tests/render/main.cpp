#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>

// What is rendered is read back, and the reader asks the C library which characters of AM and PM markers are letters.
int main(int argc, char** argv)
{
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) {
        std::fputs("there is no character type C.UTF-8\n", stderr);
        return 1;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
