# Flags of our own code only; what we link never sees them.
add_library(qz_flags INTERFACE)
target_compile_options(qz_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
target_compile_definitions(qz_flags INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
                                              QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(QZ_SANITIZE)
  target_compile_options(qz_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(qz_flags INTERFACE -fsanitize=address,undefined)
endif()
