# Warnings are errors everywhere. A packager, whose compiler may know warnings that are news here, turns that off with
# -D VANTREL_WARNINGS_ARE_ERRORS=OFF.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsuggest-override)
if(VANTREL_WARNINGS_ARE_ERRORS)
  add_compile_options(-Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options(-Wno-restrict)  # this compiler warns of overlaps that std::string cannot have
endif()
if(VANTREL_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_compile_options(-Wno-maybe-uninitialized)  # instrumented code draws false ones
  add_link_options(-fsanitize=address,undefined)
endif()
if(VANTREL_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(VANTREL_COVERAGE)
  add_compile_options(--coverage -fprofile-abs-path -fprofile-update=atomic)
  add_link_options(--coverage -Wl,--wrap=_Exit,--wrap=_exit -Wl,-u,__gcov_dump)
endif()
