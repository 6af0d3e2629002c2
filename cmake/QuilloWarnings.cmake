# One interface target carries the project's compiler discipline; every target links it.
add_library(quillo_build_flags INTERFACE)
target_compile_options(quillo_build_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
    -Wold-style-cast -Woverloaded-virtual -Wimplicit-fallthrough
    -Wno-missing-field-initializers # designated initialisers leave defaulted members out on purpose
    $<$<BOOL:${QUILLO_WERROR}>:-Werror>)
target_compile_definitions(quillo_build_flags INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_FOREACH
    QT_NO_KEYWORDS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400
    $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
if(QUILLO_SANITIZE)
    target_compile_options(quillo_build_flags INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(quillo_build_flags INTERFACE -fsanitize=address,undefined)
endif()
