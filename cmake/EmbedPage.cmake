# Makes a source file of the page that the inspector writes, run by the build as
#   cmake -D FOLDER=<folder> -D OUTPUT=<source> -P EmbedPage.cmake
# FOLDER holds the style sheet, the script, and the pieces of HTML between which they stand; the page
# lets browsers use these two alone, which it names by their hashes.

cmake_minimum_required(VERSION 3.25)

# The hash of a text as pages name it: in base 64, of which CMake makes hexadecimal digits only.
function(page_hash text result)
  set(alphabet ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
  string(SHA256 digits "${text}")
  string(APPEND digits 00) # to a multiple of 3 bytes
  set(encoded "")
  foreach(start RANGE 0 60 6)
    string(SUBSTRING ${digits} ${start} 6 group)
    foreach(shift IN ITEMS 18 12 6 0)
      math(EXPR index "(0x${group} >> ${shift}) & 63")
      string(SUBSTRING ${alphabet} ${index} 1 letter)
      string(APPEND encoded ${letter})
    endforeach()
  endforeach()
  string(REGEX REPLACE "A$" "=" encoded ${encoded}) # stands for the byte that was added
  set(${result} ${encoded} PARENT_SCOPE)
endfunction()

# The files are joined in this order, as one style sheet and one script.
set(style "")
foreach(name IN ITEMS frame content map)
  file(READ ${FOLDER}/${name}.css text)
  string(APPEND style "${text}")
endforeach()
set(script "")
foreach(name IN ITEMS search map)
  file(READ ${FOLDER}/${name}.js text)
  string(APPEND script "${text}")
endforeach()
file(READ ${FOLDER}/parts.html parts)
page_hash("\n${style}" style_hash) # after the line end of the tag
page_hash("\n${script}" script_hash)
string(REPLACE "@STYLE_HASH@" ${style_hash} parts "${parts}")
string(REPLACE "@SCRIPT_HASH@" ${script_hash} parts "${parts}")

set(source "#include \"inspect/report/PageParts.h\"\n\nnamespace consolidator::inspect {\n")
string(APPEND source "\nconstexpr PageCode pageStyle{R\"page(${style})page\"};\n")
string(APPEND source "\nconstexpr PageCode pageScript{R\"page(${script})page\"};\n")
string(APPEND source "\nnamespace part {\n")
set(mark "<!-- part ")
string(FIND "${parts}" "${mark}" begin)
while(NOT begin EQUAL -1)
  string(SUBSTRING "${parts}" ${begin} -1 parts)
  string(REGEX MATCH "^<!-- part ([A-Za-z]+) -->\n" line "${parts}")
  set(name ${CMAKE_MATCH_1})
  string(LENGTH "${line}" length)
  string(SUBSTRING "${parts}" ${length} -1 parts)
  string(FIND "${parts}" "${mark}" begin)
  string(SUBSTRING "${parts}" 0 ${begin} part)
  string(APPEND source "\nconstexpr std::string_view ${name}Source = R\"page(${part})page\";\n"
         "static_assert(isSafePart(${name}Source), \"a hole of ${name} is not safe\");\n"
         "constexpr PagePart<holesIn(${name}Source)> ${name}{${name}Source};\n")
endwhile()
string(APPEND source "\n}  // namespace part\n\n}  // namespace consolidator::inspect\n")
file(WRITE ${OUTPUT} "${source}")
