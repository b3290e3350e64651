/// @file
/// A reader for just the kind of .json that tests/data has: objects, arrays, plain strings, whole numbers.
#include "tests/support/scenefacts.h"

#include <fstream>
#include <functional>
#include <stdexcept>

namespace support {

namespace {

class FactsReader {
 public:
  explicit FactsReader(std::istream& in) : in_(in) {}

  void object(const std::function<void(const std::string& key)>& member) {
    series('{', '}', [&] {
      const std::string key = string();
      expect(':');
      member(key);
    });
  }
  void array(const std::function<void()>& element) { series('[', ']', element); }
  std::vector<std::string> strings() {
    std::vector<std::string> all;
    array([&] { all.push_back(string()); });
    return all;
  }
  std::string string() {
    expect('"');
    std::string text;
    if (!std::getline(in_, text, '"') || text.find('\\') != std::string::npos)
      throw std::runtime_error("no plain string");
    return text;
  }
  long number() {
    long value = 0;
    if (!(in_ >> value)) throw std::runtime_error("no number");
    return value;
  }

 private:
  void series(char open, char close, const std::function<void()>& element) {
    expect(open);
    if (next() == close) return expect(close);
    element();
    while (next() == ',') {
      expect(',');
      element();
    }
    expect(close);
  }
  int next() {
    in_ >> std::ws;
    return in_.peek();
  }
  void expect(char wanted) {
    if (next() != wanted) throw std::runtime_error(std::string{"no "} + wanted);
    in_.get();
  }

  std::istream& in_;
};

std::filesystem::path data(const std::string& name) { return std::filesystem::path{QUIL_TEST_DATA} / name; }

}  // namespace

std::filesystem::path scene_path(const std::string& name) { return data(name + ".quil"); }

SceneFacts scene_facts(const std::string& name) {
  std::ifstream in{data(name + ".json")};
  FactsReader reader{in};
  SceneFacts facts;
  reader.object([&](const std::string& key) {
    if (key == "version") {
      facts.version = static_cast<unsigned>(reader.number());
    } else if (key == "bytes") {
      facts.bytes = static_cast<unsigned long>(reader.number());
    } else if (key == "counts") {
      reader.object([&](const std::string& list) { facts.counts[list] = reader.number(); });
    } else if (key == "names") {
      facts.names = reader.strings();
    } else if (key == "nodes") {
      facts.nodes = reader.strings();
    } else if (key == "arcs") {
      reader.array([&] {
        const auto ends = reader.strings();
        facts.arcs.emplace_back(ends.at(0), ends.at(1));
      });
    } else {
      reader.string();
    }
  });
  return facts;
}

}  // namespace support
