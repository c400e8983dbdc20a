# The compiler options of every target: strict warnings, and sanitizers when asked for.
add_library(kestrel_options INTERFACE)
if(MSVC)
  target_compile_options(kestrel_options INTERFACE /W4 /WX /utf-8)
else()
  target_compile_options(kestrel_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
  # GCC 12 sees overlaps in joined strings where there are none.
  target_compile_options(kestrel_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
endif()
if(KESTREL_SANITIZE)
  target_compile_options(kestrel_options INTERFACE -fsanitize=${KESTREL_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=all)
  target_link_options(kestrel_options INTERFACE -fsanitize=${KESTREL_SANITIZE})
endif()
