# Warnings, sanitizers and coverage, for every target of this build and for nobody who links against it.
add_library(korvan_compiler_settings INTERFACE)

target_compile_options(korvan_compiler_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wcast-qual
    -Wundef -Wimplicit-fallthrough
    $<$<BOOL:${KORVAN_WARNINGS_AS_ERRORS}>:-Werror>)
target_compile_definitions(korvan_compiler_settings INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(KORVAN_SANITIZE)
    target_compile_options(korvan_compiler_settings INTERFACE
        -fsanitize=${KORVAN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>) # of what the instrumentation itself has put between
    target_link_options(korvan_compiler_settings INTERFACE -fsanitize=${KORVAN_SANITIZE})
endif()

if(KORVAN_COVERAGE)
    target_compile_options(korvan_compiler_settings INTERFACE --coverage -O0)
    target_link_options(korvan_compiler_settings INTERFACE --coverage)
endif()

if(KORVAN_BUILD_FUZZ)
    target_compile_options(korvan_compiler_settings INTERFACE -fsanitize=fuzzer-no-link) # what the search steers by
endif()
