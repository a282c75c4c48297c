// quillon-bench: Google Benchmark's console output, then one table of the medians (or the
// single runs) with each road's ratio to its floor and the figures the targets are set in.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

// Each road and the floor it is read against.
const std::map<std::string, std::string>& Floors() {
  static const std::map<std::string, std::string> floors = {
      {"BM_TickRoad", "BM_TickFloor"},
      {"BM_TickRoadProfile", "BM_TickFloor"},
      {"BM_ViewTickRoad", "BM_TickFloor"},
  };
  return floors;
}

class TableReporter : public benchmark::ConsoleReporter {
 public:
  struct Row {
    std::string name;
    double cpuNs = 0;
    double realNs = 0;
    std::map<std::string, double> counters;
  };

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.error_occurred) continue;
      const bool aggregate = run.run_type == Run::RT_Aggregate;
      if (aggregate && run.aggregate_name != "median") continue;
      Row row;
      row.name = run.run_name.str();
      row.cpuNs = run.GetAdjustedCPUTime() * Multiplier(run.time_unit);
      row.realNs = run.GetAdjustedRealTime() * Multiplier(run.time_unit);
      for (const auto& [key, counter] : run.counters) row.counters[key] = counter.value;
      // With repetitions only the median counts; without, each run is its own row.
      auto it = index_.find(row.name);
      if (it == index_.end()) {
        index_[row.name] = rows_.size();
        rows_.push_back(row);
      } else if (aggregate) {
        rows_[it->second] = row;
      }
    }
  }

  void Finalize() override {
    ConsoleReporter::Finalize();
    std::FILE* out = stdout;
    std::fprintf(out, "\n%-28s %12s %8s  %s\n", "road", "CPU (median)", "x floor", "figures");
    std::fprintf(out, "%-28s %12s %8s  %s\n", "----", "------------", "-------", "-------");
    for (const Row& row : rows_) {
      std::string ratio = "";
      auto floor = Floors().find(BaseName(row.name));
      if (floor != Floors().end()) {
        auto f = index_.find(floor->second);
        if (f != index_.end() && rows_[f->second].cpuNs > 0) {
          char buffer[32];
          std::snprintf(buffer, sizeof buffer, "%.2f", row.cpuNs / rows_[f->second].cpuNs);
          ratio = buffer;
        }
      }
      std::string figures;
      for (const auto& [key, value] : row.counters) {
        char buffer[96];
        if (key == "per_ticket_tick") {
          // 500 tickets at 10 ticks a second each: the share of one core.
          std::snprintf(buffer, sizeof buffer, "%s=%s  500x10/s=%.1f%% core ", key.c_str(),
                        Time(value * 1e9).c_str(), value * 5000 * 100);
        } else if (key == "bytes_per_ticket") {
          std::snprintf(buffer, sizeof buffer, "%s=%.1f KiB ", key.c_str(), value / 1024);
        } else {
          std::snprintf(buffer, sizeof buffer, "%s=%.4g ", key.c_str(), value);
        }
        figures += buffer;
      }
      std::fprintf(out, "%-28s %12s %8s  %s\n", row.name.c_str(), Time(row.cpuNs).c_str(),
                   ratio.c_str(), figures.c_str());
    }
    std::fflush(out);
  }

 private:
  static double Multiplier(benchmark::TimeUnit unit) {
    switch (unit) {
      case benchmark::kNanosecond: return 1;
      case benchmark::kMicrosecond: return 1e3;
      case benchmark::kMillisecond: return 1e6;
      case benchmark::kSecond: return 1e9;
    }
    return 1;
  }
  static std::string BaseName(const std::string& name) { return name.substr(0, name.find('/')); }
  static std::string Time(double ns) {
    char buffer[32];
    if (ns < 1e3) std::snprintf(buffer, sizeof buffer, "%.0f ns", ns);
    else if (ns < 1e6) std::snprintf(buffer, sizeof buffer, "%.2f us", ns / 1e3);
    else std::snprintf(buffer, sizeof buffer, "%.2f ms", ns / 1e6);
    return buffer;
  }

  std::vector<Row> rows_;
  std::map<std::string, std::size_t> index_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  TableReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
