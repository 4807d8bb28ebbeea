#include "files/hash_table.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace velmar {
namespace {

using Keys = std::vector<std::string>;

JsonObject Table(bool ignoreCase) {
  auto t = std::make_shared<clsVXHashTable>();
  EXPECT_EQ(t->IgnoreCase(ignoreCase), kHashOk);
  return t;
}

TEST(HashTableTest, KeysKeepOrderOfAdditionAndRemovalKeepsTheRest) {
  auto t = Table(false);
  for (const char* k : {"c", "a", "b", "d"}) EXPECT_EQ(t->Add(k, JsonValue(k)), kHashOk);
  EXPECT_EQ(t->Keys(), (Keys{"c", "a", "b", "d"}));
  EXPECT_EQ(t->Remove("a"), kHashOk);
  EXPECT_EQ(t->Keys(), (Keys{"c", "b", "d"}));
  EXPECT_EQ(t->count(), 3);
  EXPECT_EQ(*t->item("b").Text(), "b");
}

TEST(HashTableTest, FailuresReturnTheirErrorNumbers) {
  auto t = Table(false);
  EXPECT_EQ(t->Add("a", JsonValue(1)), kHashOk);
  EXPECT_EQ(t->Add("a", JsonValue(2)), kHashKeyExists);
  EXPECT_EQ(HashTableErrorText(kHashKeyExists),
            "This key is already associated with an element of this collection");
  EXPECT_EQ(t->Remove("zz"), kHashInvalidCall);
  EXPECT_EQ(t->Add("", JsonValue(1)), kHashInvalidCall);
  EXPECT_EQ(t->IgnoreCase(true), kHashNotEmpty);
  EXPECT_EQ(HashTableErrorText(kHashNotEmpty), "The Hash Table isn't empty");
  EXPECT_FALSE(t->IgnoreCase());
  EXPECT_EQ(std::get<std::int32_t>(t->item("a").data), 1);
}

TEST(HashTableTest, CaseBlindTableMatchesAnyCaseButListsKeysAsGiven) {
  auto blind = Table(true);
  EXPECT_EQ(blind->Add("Length", JsonValue(5.0)), kHashOk);
  EXPECT_TRUE(blind->Exists("LENGTH"));
  EXPECT_EQ(blind->item("length").ToDouble(), 5.0);
  EXPECT_EQ(blind->Add("LENGTH", JsonValue(1.0)), kHashKeyExists);
  EXPECT_EQ(blind->Keys(), Keys{"Length"});
  // Remove finds the item in any case but strikes only exact entries from the key list.
  EXPECT_EQ(blind->Remove("length"), kHashOk);
  EXPECT_FALSE(blind->Exists("Length"));
  EXPECT_EQ(blind->Keys(), Keys{"Length"});

  auto exact = Table(false);
  EXPECT_EQ(exact->Add("Length", JsonValue(5.0)), kHashOk);
  EXPECT_FALSE(exact->Exists("length"));
  EXPECT_EQ(exact->Add("length", JsonValue(6.0)), kHashOk);
  EXPECT_EQ(exact->count(), 2);
}

TEST(HashTableTest, ItemSetterCreatesSlotsThatKeysDoesNotList) {
  auto t = Table(false);
  t->item("hidden", JsonValue(1));
  t->Comment("note", "text");
  EXPECT_TRUE(t->Exists("hidden"));
  EXPECT_EQ(t->count(), 2);
  EXPECT_TRUE(t->Keys().empty());
  EXPECT_EQ(t->Comment("note"), "text");
  EXPECT_EQ(t->Comment("unknown"), "");
  EXPECT_TRUE(t->item("unknown").IsEmpty());
  EXPECT_EQ(t->item("").Object(), t);  // the empty key names the table itself
}

TEST(HashTableTest, SetSizeDropsItemsWhileRemoveAllAlsoClearsKeys) {
  auto t = Table(false);
  t->Add("a", JsonValue(1));
  t->Add("b", JsonValue(2));
  t->SetSize(16, 0, 0);
  EXPECT_EQ(t->count(), 0);
  EXPECT_EQ(t->Keys(), (Keys{"a", "b"}));
  t->Add("c", JsonValue(3));
  t->RemoveAll();
  EXPECT_EQ(t->count(), 0);
  EXPECT_TRUE(t->Keys().empty());
  EXPECT_EQ(t->RemoveComment("c"), kHashInvalidCall);
}

}  // namespace
}  // namespace velmar
