# Run by cpack when the files of the package stand together: the entry that starts the agent with a session, off by default.
set(folder ${CPACK_TEMPORARY_DIRECTORY}/etc/xdg/autostart)
file(MAKE_DIRECTORY ${folder})
file(COPY ${CMAKE_CURRENT_LIST_DIR}/linux/LBAgent.desktop DESTINATION ${folder} NO_SOURCE_PERMISSIONS)
