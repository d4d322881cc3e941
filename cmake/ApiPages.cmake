# The pages of the public headers and of docs/, in build/dev/api/html, where Doxygen is found:
#     cmake --build --preset dev --target docs
# A comment that Doxygen does not understand fails it.
find_package(Doxygen QUIET)
if(NOT DOXYGEN_FOUND)
  return()
endif()
set(DOXYGEN_PROJECT_BRIEF ${PROJECT_DESCRIPTION})
set(DOXYGEN_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/api)
set(DOXYGEN_STRIP_FROM_PATH ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})
set(DOXYGEN_STRIP_FROM_INC_PATH ${PROJECT_SOURCE_DIR}/src)
set(DOXYGEN_USE_MDFILE_AS_MAINPAGE docs/embedding.md)
set(DOXYGEN_JAVADOC_AUTOBRIEF YES)
set(DOXYGEN_EXTRACT_ALL YES) # names that say all have no comment
set(DOXYGEN_MACRO_EXPANSION YES)
set(DOXYGEN_EXPAND_ONLY_PREDEF YES)
set(DOXYGEN_PREDEFINED Q_OBJECT= Q_SIGNALS=signals)
set(DOXYGEN_GENERATE_TREEVIEW YES)
set(DOXYGEN_HAVE_DOT NO)
set(DOXYGEN_QUIET YES)
set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
list(TRANSFORM qz_public_headers PREPEND src/ OUTPUT_VARIABLE headers)
doxygen_add_docs(docs ${headers} docs COMMENT "API pages")
