// What a run of the benchmarks has found: rows of one table and points of curves, shown as text, JSON and pictures.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// What a row should reach.
struct Wanted {
    enum class Kind { Nothing, RatioAtMost, RatioAtLeast, CostAtMost };
    Kind kind = Kind::Nothing;
    double limit = 0;
};

inline Wanted ratioAtMost(double limit) {
    return {Wanted::Kind::RatioAtMost, limit};
}
inline Wanted ratioAtLeast(double limit) {
    return {Wanted::Kind::RatioAtLeast, limit};
}
inline Wanted costAtMost(double limit) {
    return {Wanted::Kind::CostAtMost, limit};
}

struct Row {
    std::string section;
    std::string work;
    std::string unit;
    double cost = 0;
    double floor = 0; ///< what the same takes with nothing of ours in it; 0: none
    double ratio = 0; ///< of the two, the median of those of the rounds
    Wanted wanted;

    bool missed() const;
};

/// A point of a curve; the axes' units are in their names.
struct Point {
    std::string picture; ///< also the file's name
    std::string xAxis;
    std::string yAxis;
    std::string curve;
    double x = 0;
    double y = 0;
};

class Report {
  public:
    void add(Row row);
    void add(Point point);
    /// Runs the work in a child process, for what can be set up only once in a process, and adds what it has found.
    /// Throws std::runtime_error when it fails.
    void addFromChild(const std::function<void(Report&)>& work);

    /// Of the row of this work; throws std::out_of_range when there is none.
    double costOf(const std::string& work) const;

    void print() const;
    void writeJson(const std::string& file) const;
    /// Writes PICTURE.png, and PICTURE.dat that it is drawn from, with gnuplot.
    void draw(const std::string& folder) const;

  private:
    void send(int fd) const;
    void receive(int fd);
    std::string dataOf(const std::string& picture) const;

    std::vector<Row> rows_;
    std::vector<Point> points_;
};

} // namespace bench
