# What cmake --install installs, at the paths that the programs and the web server's configuration use; DESTDIR goes
# before them. The component "camera" is what runs on the camera, "development" the rest.
set(camera_folder /usr/lib/camera)
set(shared ${CMAKE_SOURCE_DIR}/virtual-camera)  # what the virtual camera uses too
set(target ${CMAKE_SOURCE_DIR}/target)

install(TARGETS camera-cgi camera-settings camera-events DESTINATION ${camera_folder}/bin COMPONENT camera)
file(STRINGS framework/endpoint_list.h endpoints REGEX "[a-z0-9_]+\\.cgi")
foreach(line ${endpoints})
  string(REGEX MATCH "[a-z0-9_]+\\.cgi" name "${line}")
  install(CODE "
    file(MAKE_DIRECTORY \$ENV{DESTDIR}/cgi-bin)
    file(CREATE_LINK ${camera_folder}/bin/camera-cgi \$ENV{DESTDIR}/cgi-bin/${name} SYMBOLIC)" COMPONENT camera)
endforeach()

install(DIRECTORY console DESTINATION / COMPONENT camera)
install(CODE "
  foreach(folder /www /services /usr/bin /usr/lib/camera/actions)
    file(MAKE_DIRECTORY \$ENV{DESTDIR}\${folder})
  endforeach()
  file(CREATE_LINK ${camera_folder}/bin/camera-events \$ENV{DESTDIR}/services/events SYMBOLIC)
  file(CREATE_LINK ${camera_folder}/bin/camera-settings \$ENV{DESTDIR}/usr/bin/camera-settings SYMBOLIC)" COMPONENT camera)
foreach(program accountRecords answer cardFolder errorPages keepLog refreshAccounts)
  install(PROGRAMS ${shared}/bin/${program} DESTINATION ${camera_folder}/bin COMPONENT camera)
endforeach()
install(PROGRAMS ${shared}/actions/account ${shared}/actions/httpsvr DESTINATION ${camera_folder}/actions COMPONENT camera)
foreach(file lighttpd.conf common.lua guard.lua accounts.lua logins.lua pages.lua card.lua reply.lua access open.conf
    guarded.conf)
  install(FILES ${shared}/${file} DESTINATION /etc/camera COMPONENT camera)
endforeach()
if(TARGET camera-limits)
  install(TARGETS camera-limits DESTINATION ${camera_folder}/bin COMPONENT camera)
endif()

install(PROGRAMS ${target}/camera-web DESTINATION ${camera_folder}/bin COMPONENT camera)
install(PROGRAMS ${target}/S50camera DESTINATION /etc/init.d COMPONENT camera)
install(FILES ${target}/camera.service DESTINATION /usr/lib/systemd/system COMPONENT camera)
install(FILES ${target}/product.conf DESTINATION /etc/camera COMPONENT camera RENAME product.conf.example)

# The product's description, if camera-api runs on this machine.
set(CAMERA_PRODUCT ${target}/product.conf CACHE FILEPATH "The product.conf of the product whose description is installed")
if(NOT CMAKE_CROSSCOMPILING OR CMAKE_CROSSCOMPILING_EMULATOR OR CMAKE_SYSTEM_PROCESSOR STREQUAL CMAKE_HOST_SYSTEM_PROCESSOR)
  add_custom_command(OUTPUT openapi.json DEPENDS camera-api ${CAMERA_PRODUCT} ${shared}/access VERBATIM
    COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:camera-api> ${CAMERA_PRODUCT} ${shared}/access > openapi.json)
  add_custom_target(description ALL DEPENDS openapi.json)
  install(FILES ${CMAKE_BINARY_DIR}/openapi.json DESTINATION ${camera_folder} COMPONENT camera)
endif()

install(TARGETS camera-api DESTINATION ${camera_folder}/bin COMPONENT development)
if(NOT CAMERA_SANITIZERS)
  install(DIRECTORY ${CMAKE_BINARY_DIR}/bin/.debug DESTINATION ${camera_folder}/bin COMPONENT development)
endif()
