# Flags of every target of this project, carried by one interface target.
add_library(lanqor_options INTERFACE)
target_compile_options(lanqor_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion
    # The same bits on every machine: no fused multiply-add behind our back.
    -ffp-contract=off)
target_compile_definitions(lanqor_options INTERFACE
    QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_DEPRECATED_WARNINGS)

if(LANQOR_SANITIZE)
    set(sanitizer_flags -fsanitize=address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
elseif(LANQOR_BUILD_FUZZERS)
    set(sanitizer_flags -fsanitize=address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
    target_compile_options(lanqor_options INTERFACE -fsanitize=fuzzer-no-link)
elseif(LANQOR_SANITIZE_THREADS)
    set(sanitizer_flags -fsanitize=thread -fno-omit-frame-pointer)
endif()
if(sanitizer_flags)
    target_compile_options(lanqor_options INTERFACE ${sanitizer_flags})
    target_link_options(lanqor_options INTERFACE ${sanitizer_flags})
endif()
