// SPDX-License-Identifier: MIT
#include "test_items.h"

namespace morvane::archive {
namespace {

Stored_Item make_item(const char* table, const std::string& name, const std::string& value, const Cell& result) {
  Stored_Item item;
  item.table = table;
  item.name = name;
  item.value = value;
  item.result = result.text;
  item.failed = result.red;
  return item;
}

void add_items(std::vector<Stored_Item>& out, const char* table, const std::vector<Item_Row>& rows, bool heated,
               bool currents_measured) {
  for (const Item_Row& row : rows) {
    Stored_Item item = make_item(table, row.name, currents_measured ? row.rise_28v.text : row.increase.text, row.result);
    item.rise_28v = row.rise_28v.text;
    item.rise_5v = row.rise_5v.text;
    if (heated) {
      item.initial = row.initial.text;
      item.final = row.final.text;
      item.increase = row.increase.text;
    }
    out.push_back(std::move(item));
  }
}

}  // namespace

std::vector<Stored_Item> evaluation_items(const Short_Test_Evaluation& test) {
  std::vector<Stored_Item> items;
  for (const Sensor_Row& row : test.sensors) {
    Stored_Item item = make_item("sensors", row.name, row.final.text, row.result);
    item.initial = row.initial.text;
    item.final = row.final.text;
    items.push_back(std::move(item));
  }
  add_items(items, "valves", test.valves, false, true);
  add_items(items, "injector_valves", test.injector_valves, false, true);
  add_items(items, "heaters", test.heaters, true, true);
  add_items(items, "large_reactors", test.large_reactors, true, false);
  add_items(items, "small_reactors", test.small_reactors, true, false);
  add_items(items, "l_valves", test.l_valves, true, true);
  for (const Rail_Row& row : test.rails) {
    items.push_back(make_item("rails", row.name, row.value.text, row.result));
  }
  for (const Subsystem_Row& row : test.subsystems) {
    items.push_back(make_item("subsystems", row.name, row.result.text, row.result));
  }
  return items;
}

}  // namespace morvane::archive
