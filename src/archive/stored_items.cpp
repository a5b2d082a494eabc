// SPDX-License-Identifier: MIT
#include "stored_items.h"

namespace morvane::archive {
namespace {

StoredItem make_item(const char* table, const std::string& name, const std::string& value, const Cell& result) {
  StoredItem item;
  item.table = table;
  item.name = name;
  item.value = value;
  item.result = result.text;
  item.failed = result.red;
  return item;
}

void add_items(std::vector<StoredItem>& out, const char* table, const std::vector<ItemRow>& rows, bool heated,
               bool currents_measured) {
  for (const ItemRow& row : rows) {
    StoredItem item = make_item(table, row.name, currents_measured ? row.rise_28v.text : row.increase.text, row.result);
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

std::vector<StoredItem> evaluation_items(const ShortTestEvaluation& test) {
  std::vector<StoredItem> items;
  for (const SensorRow& row : test.sensors) {
    StoredItem item = make_item("sensors", row.name, row.final.text, row.result);
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
  for (const RailRow& row : test.rails) {
    items.push_back(make_item("rails", row.name, row.value.text, row.result));
  }
  for (const SubsystemRow& row : test.subsystems) {
    items.push_back(make_item("subsystems", row.name, row.result.text, row.result));
  }
  return items;
}

}  // namespace morvane::archive
