# bench/e2e-generation is a script; this is the test of its world writer and
# memory wrapper.
add_test(NAME e2e_generation_test
  COMMAND /usr/bin/python3 ${CMAKE_CURRENT_SOURCE_DIR}/e2e_generation_test.py $<TARGET_FILE:tavrel-host>)
