# The compiler options of every target: strict warnings, and sanitizers when asked for.
add_library(kestrel_options INTERFACE)
if(MSVC)
  target_compile_options(kestrel_options INTERFACE /W4 /WX /utf-8)
else()
  target_compile_options(kestrel_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
endif()
if(KESTREL_SANITIZE)
  target_compile_options(kestrel_options INTERFACE -fsanitize=${KESTREL_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=all)
  target_link_options(kestrel_options INTERFACE -fsanitize=${KESTREL_SANITIZE})
endif()
