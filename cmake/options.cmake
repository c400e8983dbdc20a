# The compiler options of every target: strict warnings, and sanitizers when asked for. Warnings are errors where somebody
# works on the sources (the presets say so), and not for everybody who builds them with a compiler of another year.
option(KESTREL_WARNINGS_ARE_ERRORS "Fail on compiler warnings" OFF)
add_library(kestrel_options INTERFACE)
if(MSVC)
  target_compile_options(kestrel_options INTERFACE /W4 /utf-8 $<$<BOOL:${KESTREL_WARNINGS_ARE_ERRORS}>:/WX>)
else()
  target_compile_options(kestrel_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                                   $<$<BOOL:${KESTREL_WARNINGS_ARE_ERRORS}>:-Werror>)
  # GCC 12 sees overlaps in joined strings where there are none.
  target_compile_options(kestrel_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
endif()
if(KESTREL_SANITIZE)
  target_compile_options(kestrel_options INTERFACE -fsanitize=${KESTREL_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=all)
  target_link_options(kestrel_options INTERFACE -fsanitize=${KESTREL_SANITIZE})
endif()
