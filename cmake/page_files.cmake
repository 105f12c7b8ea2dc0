# Writes OUTPUT, a C++ file with the texts of SCRIPTS and STYLES (lists of files) in this order and
# the hashes by which a content security policy names them.
cmake_minimum_required(VERSION 3.25)

# The SHA-256 of a file in base64.
function(hash_in_base64 file result)
  set(digits "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  file(SHA256 ${file} hex)
  set(hash "")
  # Three digits of the hash are two of base64; its 64 are filled up to 66.
  string(REGEX MATCHALL "..." threes "${hex}00")
  foreach(three ${threes})
    math(EXPR high "0x${three} >> 6")
    math(EXPR low "0x${three} & 63")
    string(SUBSTRING ${digits} ${high} 1 high)
    string(SUBSTRING ${digits} ${low} 1 low)
    string(APPEND hash ${high}${low})
  endforeach()
  string(SUBSTRING ${hash} 0 43 hash)
  set(${result} "${hash}=" PARENT_SCOPE)
endfunction()

# Appends the definition of `name`, a function that gives the files' texts, to `code`.
function(append_files name)
  set(entries "")
  foreach(file ${ARGN})
    file(READ ${file} text)
    string(TOLOWER "${text}" text)
    # A carriage return would change the text that the browser hashes; the others would end it.
    string(REGEX MATCH "</(script|style)|<!--|\r" bad "${text}")
    if(bad)
      message(FATAL_ERROR "${file} holds ${bad}, which cannot stand in a page")
    endif()
    file(SIZE ${file} size)
    set(pieces "")
    set(offset 0)
    while(offset LESS size)
      # Compilers need not take literals of more than 65,536 characters.
      file(READ ${file} piece OFFSET ${offset} LIMIT 16384 HEX)
      string(REGEX REPLACE "(..)" "\\\\x\\1" piece "${piece}")
      string(APPEND pieces "      \"${piece}\",\n")
      math(EXPR offset "${offset} + 16384")
    endwhile()
    hash_in_base64(${file} hash)
    string(APPEND entries "    {{\n${pieces}    }, \"${hash}\"},\n")
  endforeach()
  string(APPEND code "
const std::vector<PageFile>& ${name}() {
  static const std::vector<PageFile> files{
${entries}  };
  return files;
}
")
  set(code "${code}" PARENT_SCOPE)
endfunction()

set(code "#include \"writers/html/PageFiles.h\"\n\nnamespace html {\n")
append_files(PageScripts ${SCRIPTS})
append_files(PageStyles ${STYLES})
file(WRITE ${OUTPUT} "${code}\n}  // namespace html\n")
