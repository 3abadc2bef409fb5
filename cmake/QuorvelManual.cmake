# SPDX-License-Identifier: GPL-3.0-or-later
# The manual as a web site, in both languages: "cmake --build ... --target manual". No other target needs it, so that
# a build without it stays fast; a package has it when it was built before.

set(QUORVEL_MANUAL "${PROJECT_BINARY_DIR}/manual/html")

find_program(SPHINX_BUILD sphinx-build)
mark_as_advanced(SPHINX_BUILD)
if(NOT SPHINX_BUILD)
    add_custom_target(
        manual
        COMMAND "${CMAKE_COMMAND}" -E echo "sphinx-build is missing: scripts/install-packages manual"
        COMMAND "${CMAKE_COMMAND}" -E false
        VERBATIM)
    return()
endif()

# What a build leaves beside its pages: its intermediate files, and what it keeps in the folder for temporary files.
set(manual_work "${PROJECT_BINARY_DIR}/manual/work")
set(manual_sources "${PROJECT_SOURCE_DIR}/docs/manual")
set(sphinx
    "${CMAKE_COMMAND}"
    -E
    env
    "TMPDIR=${manual_work}"
    "${SPHINX_BUILD}"
    -q
    -W
    --keep-going
    -c
    "${manual_sources}"
    -D
    "release=${PROJECT_VERSION}")
# From the beginning each time, which takes seconds: a page that was deleted leaves nothing behind. Of the two web
# sites the outer one is written first. The last manual stays until this one is complete and has no dead link.
add_custom_target(
    manual
    COMMAND "${CMAKE_COMMAND}" -E rm -rf "${manual_work}"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${manual_work}"
    COMMAND ${sphinx} -D language=zh_CN -d "${manual_work}/zh" "${manual_sources}/zh" "${manual_work}/html"
    COMMAND ${sphinx} -D language=en -d "${manual_work}/en" "${manual_sources}/en" "${manual_work}/html/en"
    COMMAND "${CMAKE_COMMAND}" -E rm -f "${manual_work}/html/.buildinfo" "${manual_work}/html/objects.inv"
            "${manual_work}/html/en/.buildinfo" "${manual_work}/html/en/objects.inv"
    COMMAND "${PROJECT_SOURCE_DIR}/scripts/check-manual" --html "${manual_work}/html"
    COMMAND "${CMAKE_COMMAND}" -E rm -rf "${QUORVEL_MANUAL}"
    COMMAND "${CMAKE_COMMAND}" -E rename "${manual_work}/html" "${QUORVEL_MANUAL}"
    COMMENT "Manual"
    VERBATIM)
