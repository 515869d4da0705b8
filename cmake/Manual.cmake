# The manual: docs/manual/manual.md as a page of HTML, and laid out as a PDF file by lorebinder-pdf, beside the programs.
# As script: cmake -DIN=manual.md -DPAGE=page.html.in -DOUT=out.html -DCMARK=program -P Manual.cmake

if(CMAKE_SCRIPT_MODE_FILE)
  execute_process(COMMAND ${CMARK} --extension table ${IN} OUTPUT_VARIABLE MANUAL COMMAND_ERROR_IS_FATAL ANY)
  configure_file(${PAGE} ${OUT} @ONLY)
  return()
endif()

find_program(CMARK_PROGRAM cmark-gfm REQUIRED)
set(manual_html ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/ProUsersManual.html)
set(manual_pdf ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/ProUsersManual.pdf)
set(manual_sources ${PROJECT_SOURCE_DIR}/docs/manual/manual.md ${PROJECT_SOURCE_DIR}/docs/manual/page.html.in)
add_custom_command(
  OUTPUT ${manual_html}
  COMMAND ${CMAKE_COMMAND} -DIN=${PROJECT_SOURCE_DIR}/docs/manual/manual.md
          -DPAGE=${PROJECT_SOURCE_DIR}/docs/manual/page.html.in -DOUT=${manual_html} -DCMARK=${CMARK_PROGRAM}
          -P ${CMAKE_CURRENT_LIST_FILE}
  DEPENDS ${manual_sources} ${CMAKE_CURRENT_LIST_FILE}
  COMMENT "Making the manual"
  VERBATIM)
add_custom_command(
  OUTPUT ${manual_pdf}
  COMMAND lorebinder-pdf ${manual_html} ${manual_pdf}
  DEPENDS ${manual_html} lorebinder-pdf
  COMMENT "Laying out the manual"
  VERBATIM)
add_custom_target(manual ALL DEPENDS ${manual_html} ${manual_pdf})
install(FILES ${manual_html} ${manual_pdf} DESTINATION share/doc/lorebinder)
