# Copies the library's public headers into an include tree for hosts and
# rewrites their includes of each other from "core/x.h" to <formwerk/core/x.h>.
# Inside this source tree the headers find each other through src/ on the
# include path; a host has only include/ there, so an installed header's own
# includes must name the formwerk/ folder too, or they resolve against the
# host's folders (or not at all).
# Run with -P: SOURCE_DIR (src/), DEST_DIR (.../include/formwerk), HEADER_LIST
# (a file naming one header per line, relative to SOURCE_DIR).
file(STRINGS "${HEADER_LIST}" headers)
foreach(header IN LISTS headers)
    file(READ "${SOURCE_DIR}/${header}" text)
    string(REGEX REPLACE "#include \"([^\"]+)\"" "#include <formwerk/\\1>" text "${text}")
    set(target "${DEST_DIR}/${header}")
    # Unchanged files keep their time stamps, so hosts built against the
    # staged tree do not rebuild for nothing.
    if(EXISTS "${target}")
        file(READ "${target}" old)
        if(old STREQUAL text)
            continue()
        endif()
    endif()
    file(WRITE "${target}" "${text}")
endforeach()
