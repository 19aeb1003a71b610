# What a release is built with against those who find a fault in it all the same: a smashed stack, an overrun buffer or an
# index out of range ends in a message instead of in foreign code, calls and returns go where they should, and the tables
# of the linker are read-only before the first line of the program runs. tests/architecture/hardened.sh reads the files.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckPIESupported)
check_pie_supported()

# The sanitizers see more, and replace the same functions; an unoptimised build has nothing to fortify.
if(WEBI18N_SANITIZE OR WEBI18N_LIBFUZZER)
    return()
endif()

check_cxx_compiler_flag(-fcf-protection WEBI18N_HAS_CF_PROTECTION)
# Level 3 asks the compiler for sizes that are known only when the program runs.
check_cxx_source_compiles("
#include <cstddef>
extern char* text;
std::size_t sizeOfText() { return __builtin_dynamic_object_size(text, 0); }
int main() { return 0; }
" WEBI18N_HAS_DYNAMIC_OBJECT_SIZE)
set(fortifyLevel 2)
if(WEBI18N_HAS_DYNAMIC_OBJECT_SIZE)
    set(fortifyLevel 3)
endif()

set(hardened -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${fortifyLevel})
if(WEBI18N_HAS_CF_PROTECTION)
    list(APPEND hardened -fcf-protection)
endif()
target_compile_options(webi18n_flags INTERFACE "$<$<CONFIG:Release>:${hardened}>")
target_link_options(webi18n_flags INTERFACE "$<$<CONFIG:Release>:-Wl,-z,relro,-z,now>")
