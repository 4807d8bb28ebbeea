// The generic field machinery: reads with conversion and checks, the error stack rules,
// captions, formats, entry warnings, copying and unit changes.
#include "core/data_class.h"

#include <gtest/gtest.h>

#include "core/helpers.h"
#include "core/ui_hooks.h"

namespace velmar {
namespace {

const LabelList kShapes = {{"Round", "Square"}, {"RoundKey", "SquareKey"}};

// A small class of the same shape as the real ones, written the same way.
#define TEST_FIELDS                                                                                        \
  VX_ENUM(Shape, kShapes, .label = "Shape:")                                                               \
  VX_QTY(Length, Length, .label = "Length:", .symbol = "L", .check = Check::NotPositive, .word = "Length") \
  VX_QTY(Span, Length, .label = "Span:", .check = Check::Negative, .word = "Span", .flags = kNoConvert)    \
  VX_QTY(Area, Area, .label = "Area:")                                                                     \
  VX_REAL(Angle, .label = "Angle:", .format = "0.00", .check = Check::Outside, .lo = -20, .hi = 75,        \
          .word = "Angle")                                                                                 \
  VX_REAL(Ratio, .label = "Ratio:", .format = "0.000", .check = Check::NotPositive, .word = "Ratio",       \
          .flags = kWarnEntryOutside, .entryLo = 0.0, .entryHi = 0.3)                                      \
  VX_INT(Count, .label = "Count:", .format = "0", .check = Check::BelowOne, .word = "Count")               \
  VX_TEXT(Source, .label = "Source:", .textInit = "Manual")

class TestClass : public DataClass {
 public:
  enum class Field {
#include "core/fields_enum.h"
    TEST_FIELDS
#include "core/fields_undef.h"
        Count_
  };
#include "core/fields_accessors.h"
  TEST_FIELDS
#include "core/fields_undef.h"
  explicit TestClass(std::shared_ptr<clsVXUnits> u);
};

const FieldDesc kTestFields[] = {
#include "core/fields_table.h"
    TEST_FIELDS
#include "core/fields_undef.h"
};

TestClass::TestClass(std::shared_ptr<clsVXUnits> u) : DataClass(kTestFields, std::move(u)) {}

struct DataClassTest : ::testing::Test {
  std::shared_ptr<clsVXUnits> units = std::make_shared<clsVXUnits>();
  TestClass obj{units};
  void SetUp() override {
    units->SigDigits(10);
    DefaultHeadlessHooks().messages.clear();
  }
};

TEST_F(DataClassTest, ReadsConvertAndWritesStoreInTheSelectedUnit) {
  units->LengthIndex(kM);
  obj.Length(kFt, 100.0);
  EXPECT_DOUBLE_EQ(obj.Raw(FieldId(TestClass::Field::Length)), 30.48);
  EXPECT_DOUBLE_EQ(obj.Length(kCurrent), 30.48);
  EXPECT_DOUBLE_EQ(obj.Length(kFt), 100.0);
  EXPECT_DOUBLE_EQ(obj.Length(kMm), 30480.0);
  // A link is shared: a new selection is seen at the next read.
  units->LengthIndex(kFt);
  EXPECT_DOUBLE_EQ(obj.Length(kM), RoundToSigDigits(30.48 * 0.3048, 10));
}

TEST_F(DataClassTest, ReadChecksPushTheirWordAndStillReturnTheValue) {
  struct Case {
    TestClass::Field field;
    double value;
    bool pushes;
  };
  const Case cases[] = {
      {TestClass::Field::Length, 0.0, true},   {TestClass::Field::Length, 1e-9, false},
      {TestClass::Field::Span, 0.0, false},    {TestClass::Field::Span, -0.1, true},
      {TestClass::Field::Angle, -20.0, false}, {TestClass::Field::Angle, -20.1, true},
      {TestClass::Field::Angle, 75.0, false},  {TestClass::Field::Angle, 75.1, true},
      {TestClass::Field::Count, 1.0, false},   {TestClass::Field::Count, 0.0, true},
      {TestClass::Field::Area, -5.0, false},
  };
  for (const Case& c : cases) {
    obj.ClearErrorStack();
    obj.SetRaw(FieldId(c.field), c.value);
    EXPECT_EQ(obj.Read(FieldId(c.field)), c.value);
    EXPECT_EQ(obj.ErrorsFound(), c.pushes) << obj.Fields()[FieldId(c.field)].name << " " << c.value;
  }
}

TEST_F(DataClassTest, ErrorStackDropsRepeatsOnlyWhileTheFlagIsSet) {
  obj.Length(kCurrent);
  obj.Length(kCurrent);
  obj.Count();
  EXPECT_EQ(obj.ErrorText(), "\tLength\r\n\tCount\r\n");
  // The repeat test leaves the control characters out: a text across two entries is present.
  obj.Errors("thCou");
  EXPECT_EQ(obj.ErrorText(), "\tLength\r\n\tCount\r\n");
  // ErrorsFound reads True then False; the text stays until Errors is read.
  EXPECT_TRUE(obj.ErrorsFound());
  EXPECT_FALSE(obj.ErrorsFound());
  EXPECT_EQ(obj.ErrorText(), "\tLength\r\n\tCount\r\n");
  // With the flag cleared, a repeat is added again.
  obj.Length(kCurrent);
  EXPECT_EQ(obj.Errors(), "\tLength\r\n\tCount\r\n\tLength\r\n");
  EXPECT_EQ(obj.Errors(), "");
  EXPECT_TRUE(obj.ErrorsFound());
}

TEST_F(DataClassTest, CaptionsSymbolsFormatsAndLabels) {
  units->LengthIndex(kM);
  obj.Length(kCurrent, 12.34567);
  obj.Angle(2.675);
  obj.Shape(1);
  EXPECT_EQ(obj.LengthFieldName(), "  Length:");
  EXPECT_EQ(obj.LengthSymbol(), "L");
  EXPECT_EQ(obj.LengthFormatted(), "12.346");  // the metre's default format
  units->LengthFormat("0.0");
  EXPECT_EQ(obj.LengthFormatted(), "12.3");
  EXPECT_EQ(obj.AngleFormatted(), "2.68");
  EXPECT_EQ(obj.ShapeLabel(), "Square");
  EXPECT_EQ(obj.ShapeLabel(0), "Round");
  EXPECT_EQ(obj.FieldIndex("Ratio"), FieldId(TestClass::Field::Ratio));
  EXPECT_EQ(obj.FieldIndex("Nothing"), -1);
}

TEST_F(DataClassTest, FirstEntryOutsideItsRangeWarnsOnce) {
  auto& shown = DefaultHeadlessHooks().messages;
  obj.Ratio(0.3);  // both bounds are inside
  EXPECT_TRUE(shown.empty());
  obj.Ratio(0.0);
  obj.Ratio(-0.01);
  obj.Ratio(0.0);
  obj.Ratio(0.31);
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_NE(shown[0].text.find("Entry is outside of valid range [0.0\u00b7\u00b70.3]"), std::string::npos);
  EXPECT_EQ(obj.Ratio(), 0.31);
  obj.Ratio(0.5);  // a stored value is replaced silently
  EXPECT_EQ(shown.size(), 2u);
  EXPECT_EQ(obj.Ratio(), 0.5);
}

TEST_F(DataClassTest, ConvertAllDataSkipsFlaggedFieldsAndNonQuantities) {
  obj.Length(kCurrent, 10.0);
  obj.Span(kCurrent, 10.0);
  obj.Area(kCurrent, 10.0);
  obj.Angle(10.0);
  const auto old = units->CopyClass();
  units->LengthIndex(kM);
  units->AreaIndex(kM2);
  obj.ConvertAllData(*units, *old);
  EXPECT_DOUBLE_EQ(obj.Length(kCurrent), 3.048);
  EXPECT_DOUBLE_EQ(obj.Span(kCurrent), 10.0);
  EXPECT_DOUBLE_EQ(obj.Area(kCurrent), 0.9290304);
  EXPECT_DOUBLE_EQ(obj.Angle(), 10.0);
  EXPECT_EQ(obj.Source(), "Manual");  // the text of a new object
  obj.ClearAllData();
  EXPECT_EQ(obj.Length(kCurrent), 0.0);
  EXPECT_EQ(obj.Source(), "");
}

}  // namespace
}  // namespace velmar
