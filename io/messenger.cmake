set(MESSENGER_SOURCES
  block_chain.cc sibling_signal.cc)
set(MESSENGER_TESTS
  block_chain_test.cc)
