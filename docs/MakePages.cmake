# Makes the pages of the help from docs/help: fills in version and addresses, shows the pictures that exist. Needs no
# tool but CMake, so that every build has the help.
#   SOURCE   the docs folder           PAGES   where the pages and the project of the help compiler go
#   TARGET   the program folder        VERSION, WEBSITE, SUPPORT   texts to fill in

cmake_minimum_required(VERSION 3.25)

# Replaces every marker "<!-- picture: NAME | WORDS -->" by the picture, or by nothing as long as there is none. `prefix`
# leads from the page to the folder that holds the pictures.
function(show_pictures text_name prefix)
  set(text "${${text_name}}")
  while("${text}" MATCHES "<!-- picture: ([^ |]+) \\| ([^>]*) -->\n?")
    set(marker "${CMAKE_MATCH_0}")
    set(name "${CMAKE_MATCH_1}")
    set(words "${CMAKE_MATCH_2}")
    set(picture "")
    if(EXISTS "${SOURCE}/pictures/${name}")
      if(NOT EXISTS "${PAGES}/pictures/${name}")
        file(COPY "${SOURCE}/pictures/${name}" DESTINATION "${PAGES}/pictures")
        file(APPEND "${PAGES}/help.hhp" "pictures/${name}\n")
      endif()
      set(picture "<img src=\"${prefix}pictures/${name}\" alt=\"${words}\"><span>${words}</span>")
      set(picture "<p class=\"picture\">${picture}</p>\n")
    endif()
    string(REPLACE "${marker}" "${picture}" text "${text}")
  endwhile()
  set(${text_name} "${text}" PARENT_SCOPE)
endfunction()

function(make_page from to prefix)
  file(READ "${from}" text)
  string(REPLACE "@VERSION@" "${VERSION}" text "${text}")
  string(REPLACE "@WEBSITE@" "${WEBSITE}" text "${text}")
  string(REPLACE "@SUPPORT@" "${SUPPORT}" text "${text}")
  show_pictures(text "${prefix}")
  file(WRITE "${to}" "${text}")
endfunction()

file(REMOVE_RECURSE "${PAGES}" "${TARGET}/help")
file(MAKE_DIRECTORY "${PAGES}")
foreach(name help.hhp toc.hhc index.hhk style.css)
  file(COPY "${SOURCE}/help/${name}" DESTINATION "${PAGES}")
endforeach()
file(GLOB pages RELATIVE "${SOURCE}/help" "${SOURCE}/help/*.html")
foreach(page IN LISTS pages)
  make_page("${SOURCE}/help/${page}" "${PAGES}/${page}" "")
endforeach()

make_page("${SOURCE}/Read Me.html" "${TARGET}/Read Me.html" "help/")
file(COPY "${PAGES}/" DESTINATION "${TARGET}/help" REGEX "\\.(hhp|hhc|hhk)$" EXCLUDE)
