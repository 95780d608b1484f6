set(MESSENGER_SOURCES
  block_chain.cc sibling_signal.cc sibling_config_posix.cc sibling_messenger.cc
  parent_watch_posix.cc sibling_streams.cc)
set(MESSENGER_TESTS
  block_chain_test.cc parent_watch_test_posix.cc)
