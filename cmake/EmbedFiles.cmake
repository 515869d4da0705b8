# Turns files into a .cpp with their bytes, so that a program needs none of them at run time.
#
# Included:  lore_embed_files(target folder pattern...)  compiles the files of a folder that match into the target as
#            lore::SampleFiles(), named by their path below the folder.
# As script: cmake -DEMBED_ROOT=folder -DEMBED_LIST=file -DEMBED_OUT=file.cpp -P EmbedFiles.cmake

if(CMAKE_SCRIPT_MODE_FILE)
  file(STRINGS ${EMBED_LIST} names)
  set(arrays "")
  set(entries "")
  set(number 0)
  foreach(name IN LISTS names)
    file(READ ${EMBED_ROOT}/${name} hex HEX)
    file(SIZE ${EMBED_ROOT}/${name} size)
    string(REGEX REPLACE "(................................)" "\\1\n" hex "${hex}")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
    string(APPEND arrays "const unsigned char kBytes${number}[] = {\n${bytes}0};\n")
    string(APPEND entries "    {\"${name}\", Text(kBytes${number}, ${size})},\n")
    math(EXPR number "${number} + 1")
  endforeach()
  file(WRITE ${EMBED_OUT}.new "#include \"app/sample_files.h\"

namespace lore {
namespace {

std::string_view Text(const unsigned char* bytes, size_t size) {
    return {reinterpret_cast<const char*>(bytes), size};
}

${arrays}
const SampleFile kFiles[] = {
${entries}};

}  // namespace

std::span<const SampleFile> SampleFiles() {
    return kFiles;
}

}  // namespace lore
")
  file(RENAME ${EMBED_OUT}.new ${EMBED_OUT})
  return()
endif()

set(EMBED_FILES_SCRIPT ${CMAKE_CURRENT_LIST_FILE})

function(lore_embed_files target folder)
  list(TRANSFORM ARGN PREPEND ${folder}/ OUTPUT_VARIABLE patterns)
  file(GLOB names CONFIGURE_DEPENDS RELATIVE ${folder} ${patterns})
  list(SORT names)
  set(out ${CMAKE_CURRENT_BINARY_DIR}/${target}_files.cpp)
  list(JOIN names "\n" lines)
  file(CONFIGURE OUTPUT ${out}.list CONTENT "${lines}\n" @ONLY)
  list(TRANSFORM names PREPEND ${folder}/ OUTPUT_VARIABLE paths)
  add_custom_command(
    OUTPUT ${out}
    COMMAND ${CMAKE_COMMAND} -DEMBED_ROOT=${folder} -DEMBED_LIST=${out}.list -DEMBED_OUT=${out} -P ${EMBED_FILES_SCRIPT}
    DEPENDS ${paths} ${out}.list ${EMBED_FILES_SCRIPT}
    COMMENT "Embedding the files of ${folder}"
    VERBATIM)
  target_sources(${target} PRIVATE ${out})
endfunction()
