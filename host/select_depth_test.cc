// The deepest object the store holds travels to the reporter: the event
// reader's nesting bound lies above the select reply about it.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "host/select_eval.h"
#include "host/store_test_world.h"
#include "protocol/ioprim.h"
#include "protocol/memory_stream.h"
#include "queues/event_io.h"
#include "queues/events.h"
#include "tql/schema.h"

namespace host::testing {
namespace {

// A select reply about an object at the depth limit nests the event, its
// record, kMaxDepth + 1 patches, and an object reference with its origin.
static_assert(protocol::ioprim::kMaxNesting >= kMaxDepth + 5,
              "the event reader must read every reply about stored objects");

int chainLength(const tql::patch_t& p) {
  int n = 1;
  for (const tql::patch_t* at = &p; !at->children.empty(); at = &at->children.front()) ++n;
  return n;
}

TEST(SelectReplyDepth, AReplyAboutTheDeepestObjectReadsBack) {
  TestWorld w;
  std::string parent = "root";
  for (int level = 1; level <= kMaxDepth; ++level) {
    std::string label = "d" + std::to_string(level);
    std::vector<tql::property_ptr> extra;
    if (level == kMaxDepth) extra.push_back(object_prop(schema::kIssueNode, tql::kRootId));
    w.add(parent, schema::kDomain, label, std::move(extra));
    parent = label;
  }
  EXPECT_THROW(w.add(parent, schema::kDomain, "below"), std::runtime_error);

  queues::Return_Tql_Select_Event reply(queues::rept, 1, {});
  reply.data.res = select(w.store(), {tql::kRootId},
                          step(schema::kDomain, tql::kPatternNested | tql::kPatternAllProps));
  ASSERT_EQ(1u, reply.data.res.size());
  ASSERT_EQ(kMaxDepth + 1, chainLength(reply.data.res.front()));

  protocol::MemoryPipe pipe(4096);
  protocol::ioprim prim(pipe.in(), pipe.out());
  prim << reply;
  prim.flush();
  std::unique_ptr<queues::event> back = queues::read_event(prim);
  EXPECT_TRUE(back->equals(reply));
  EXPECT_FALSE(prim.broken());
}

}  // namespace
}  // namespace host::testing
