// The array of record pointers, and the record of the centre.

#include <climits>

#include <gtest/gtest.h>

#include "tiltpole/screening/PoseSensorCenterParameter.h"
#include "tiltpole/screening/PoseSensorDataArray.h"

namespace {

using tiltpole::PoseSensorCenterParameter;
using tiltpole::PoseSensorData;
using tiltpole::PoseSensorDataArray;

TEST(PoseSensorDataArray, StartsEmpty) { EXPECT_EQ(PoseSensorDataArray().GetSize(), 0); }

TEST(PoseSensorDataArray, AddAppendsAndGivesTheNewIndex) {
  PoseSensorData a;
  PoseSensorData b;
  PoseSensorDataArray arr;
  EXPECT_EQ(arr.Add(&a), 0);
  EXPECT_EQ(arr.Add(&b), 1);
  EXPECT_EQ(arr.GetSize(), 2);
  EXPECT_EQ(arr.GetAt(0), &a);
  EXPECT_EQ(arr[1], &b);
}

TEST(PoseSensorDataArray, HoldsNullEntries) {
  PoseSensorDataArray arr;
  EXPECT_EQ(arr.Add(nullptr), 0);
  EXPECT_EQ(arr.GetSize(), 1);
  EXPECT_EQ(arr.GetAt(0), nullptr);
}

TEST(PoseSensorDataArray, SetAtReplacesAnEntry) {
  PoseSensorData a;
  PoseSensorData b;
  PoseSensorDataArray arr;
  arr.Add(&a);
  arr.SetAt(0, &b);
  EXPECT_EQ(arr.GetAt(0), &b);
  EXPECT_EQ(arr.GetSize(), 1);
}

TEST(PoseSensorDataArray, AnEntryCanBeReplacedThroughTheOperator) {
  PoseSensorData a;
  PoseSensorDataArray arr;
  arr.Add(nullptr);
  arr[0] = &a;
  EXPECT_EQ(arr.GetAt(0), &a);
}

TEST(PoseSensorDataArray, ReadingOutsideGivesNull) {
  PoseSensorData a;
  PoseSensorDataArray arr;
  arr.Add(&a);
  const PoseSensorDataArray& read = arr;
  EXPECT_EQ(arr.GetAt(-1), nullptr);
  EXPECT_EQ(arr.GetAt(1), nullptr);
  EXPECT_EQ(read[INT_MIN], nullptr);
  EXPECT_EQ(read[INT_MAX], nullptr);
}

TEST(PoseSensorDataArray, WritingOutsideIsForgotten) {
  PoseSensorData a;
  PoseSensorDataArray arr;
  arr.SetAt(0, &a);
  arr.SetAt(-1, &a);
  arr[7] = &a;
  EXPECT_EQ(arr.GetSize(), 0);
  EXPECT_EQ(arr[7], nullptr);
}

TEST(PoseSensorDataArray, RemoveAllEmptiesItAndLeavesTheRecords) {
  PoseSensorData a;
  a.Azimuth = 12.5;
  PoseSensorDataArray arr;
  arr.Add(&a);
  arr.RemoveAll();
  EXPECT_EQ(arr.GetSize(), 0);
  EXPECT_EQ(arr.GetAt(0), nullptr);
  EXPECT_EQ(a.Azimuth, 12.5);
}

TEST(PoseSensorDataArray, ACopyHoldsTheSameRecords) {
  PoseSensorData a;
  PoseSensorDataArray arr;
  arr.Add(&a);
  PoseSensorDataArray copy = arr;
  copy.Add(nullptr);
  EXPECT_EQ(copy.GetAt(0), &a);
  EXPECT_EQ(arr.GetSize(), 1);
}

TEST(PoseSensorDataArray, ARangeLoopVisitsTheEntriesInOrder) {
  PoseSensorData a;
  PoseSensorDataArray arr;
  arr.Add(&a);
  arr.Add(nullptr);
  int index = 0;
  for (const PoseSensorData* rec : arr) EXPECT_EQ(rec, arr.GetAt(index++));
  EXPECT_EQ(index, 2);
}

TEST(PoseSensorCenterParameter, StartsInvalidAndAtZero) {
  const PoseSensorCenterParameter center;
  EXPECT_EQ(center.Valid, 0);
  EXPECT_EQ(center.CenterX, 0.0);
  EXPECT_EQ(center.CenterY, 0.0);
  EXPECT_EQ(center.CenterZ, 0.0);
  EXPECT_EQ(center.Radius, 0.0);
}

TEST(PoseSensorCenterParameter, HoldsItsFieldsInTheOrderHostsInitialiseThemIn) {
  const PoseSensorCenterParameter center = {1, 2.0, 3.0, 4.0, 5.0};
  EXPECT_EQ(center.Valid, 1);
  EXPECT_EQ(center.CenterX, 2.0);
  EXPECT_EQ(center.CenterY, 3.0);
  EXPECT_EQ(center.CenterZ, 4.0);
  EXPECT_EQ(center.Radius, 5.0);
}

}  // namespace
