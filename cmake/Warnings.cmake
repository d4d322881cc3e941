# Flags of our own code only; what we link never sees them.
add_library(qz_flags INTERFACE)
target_compile_options(qz_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
target_compile_definitions(qz_flags INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
                                              QT_DISABLE_DEPRECATED_BEFORE=0x060400)
# An index beyond a container's end, or an empty optional's value, ends the program instead of going unseen.
target_compile_definitions(qz_flags INTERFACE $<$<NOT:$<CONFIG:Release>>:_GLIBCXX_ASSERTIONS>)
if(QZ_SANITIZE)
  # A number that fits no integer is converted to anything: gcc counts that among the undefined only when told so.
  set(qz_sanitizers -fsanitize=address,undefined,float-cast-overflow)
  target_compile_options(qz_flags INTERFACE ${qz_sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(qz_flags INTERFACE ${qz_sanitizers})
endif()
