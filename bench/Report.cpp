#include "Report.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

namespace bench {
namespace {

std::string number(double value) {
    if (value == 0) {
        return "";
    }
    char text[32];
    const int decimals = value < 10 ? 2 : (value < 1000 ? 1 : 0);
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string textOf(const Wanted& wanted) {
    switch (wanted.kind) {
    case Wanted::Kind::RatioAtMost:
        return "ratio at most " + number(wanted.limit);
    case Wanted::Kind::RatioAtLeast:
        return "ratio at least " + number(wanted.limit);
    case Wanted::Kind::CostAtMost:
        return "at most " + number(wanted.limit);
    case Wanted::Kind::Nothing:
        break;
    }
    return "";
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        result += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    }
    return result + "\"";
}

/// The fields of a line, between tabs.
std::vector<std::string> fieldsOf(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream input(line);
    for (std::string field; std::getline(input, field, '\t');) {
        fields.push_back(field);
    }
    return fields;
}

} // namespace

bool Row::missed() const {
    switch (wanted.kind) {
    case Wanted::Kind::RatioAtMost:
        return ratio > wanted.limit;
    case Wanted::Kind::RatioAtLeast:
        return ratio < wanted.limit;
    case Wanted::Kind::CostAtMost:
        return cost > wanted.limit;
    case Wanted::Kind::Nothing:
        break;
    }
    return false;
}

void Report::add(Row row) {
    if (row.ratio == 0 && row.floor > 0) {
        row.ratio = row.cost / row.floor;
    }
    rows_.push_back(std::move(row));
}

void Report::add(Point point) {
    points_.push_back(std::move(point));
}

double Report::costOf(const std::string& work) const {
    for (const Row& row : rows_) {
        if (row.work == work) {
            return row.cost;
        }
    }
    throw std::out_of_range("no row " + work);
}

void Report::print() const {
    std::string section;
    std::printf("%-58s %10s %-5s %10s %7s  %s\n", "work", "cost", "", "floor", "ratio", "wanted");
    for (const Row& row : rows_) {
        if (row.section != section) {
            section = row.section;
            std::printf("-- %s\n", section.c_str());
        }
        std::printf("%-58s %10s %-5s %10s %7s  %s%s\n", row.work.c_str(), number(row.cost).c_str(), row.unit.c_str(),
                    number(row.floor).c_str(), number(row.ratio).c_str(), textOf(row.wanted).c_str(),
                    row.missed() ? " MISSED" : "");
    }
}

void Report::writeJson(const std::string& file) const {
    std::ofstream output(file);
    const char* separator = "";
    output << "{\"rows\": [";
    for (const Row& row : rows_) {
        output << separator << "\n  {\"section\": " << quoted(row.section) << ", \"work\": " << quoted(row.work)
               << ", \"unit\": " << quoted(row.unit) << ", \"cost\": " << row.cost << ", \"floor\": " << row.floor
               << ", \"ratio\": " << row.ratio << ", \"wanted\": " << quoted(textOf(row.wanted))
               << ", \"missed\": " << (row.missed() ? "true" : "false") << "}";
        separator = ",";
    }
    output << "],\n \"points\": [";
    separator = "";
    for (const Point& point : points_) {
        output << separator << "\n  {\"picture\": " << quoted(point.picture) << ", \"curve\": " << quoted(point.curve)
               << ", " << quoted(point.xAxis) << ": " << point.x << ", " << quoted(point.yAxis) << ": " << point.y
               << "}";
        separator = ",";
    }
    output << "]}\n";
    if (!output) {
        throw std::runtime_error("cannot write " + file);
    }
}

/// The curves as gnuplot reads them: one after the other, two blank lines between.
std::string Report::dataOf(const std::string& picture) const {
    std::map<std::string, std::string> curves;
    for (const Point& point : points_) {
        if (point.picture == picture) {
            std::string& curve = curves[point.curve];
            curve += curve.empty() ? quoted(point.curve) + "\n" : "";
            curve += std::to_string(point.x) + " " + std::to_string(point.y) + "\n";
        }
    }
    std::string data;
    for (const auto& [name, curve] : curves) {
        data += (data.empty() ? "" : "\n\n") + curve;
    }
    return data;
}

void Report::draw(const std::string& folder) const {
    std::set<std::string> drawn;
    for (const Point& point : points_) {
        if (!drawn.insert(point.picture).second) {
            continue;
        }
        const std::string file = folder + "/" + point.picture;
        std::ofstream(file + ".dat") << dataOf(point.picture);
        FILE* const gnuplot = ::popen("gnuplot", "w");
        if (gnuplot == nullptr) {
            throw std::runtime_error("cannot start gnuplot");
        }
        std::fprintf(
            gnuplot,
            "set terminal png size 800,500\nset output '%s.png'\nset logscale xy\nset key outside below\n"
            "set grid\nset xlabel '%s'\nset ylabel '%s'\nstats '%s.dat' using 1:2 nooutput\n"
            "plot for [i=0:STATS_blocks-1] '%s.dat' index i using 1:2 with linespoints title columnheader(1)\n",
            file.c_str(), point.xAxis.c_str(), point.yAxis.c_str(), file.c_str(), file.c_str());
        if (::pclose(gnuplot) != 0) {
            throw std::runtime_error("gnuplot has failed; is it installed?");
        }
    }
}

void Report::send(int fd) const {
    std::ostringstream text;
    text.precision(17);
    for (const Row& row : rows_) {
        text << "row\t" << row.section << '\t' << row.work << '\t' << row.unit << '\t' << row.cost << '\t' << row.floor
             << '\t' << row.ratio << '\t' << static_cast<int>(row.wanted.kind) << '\t' << row.wanted.limit << '\n';
    }
    for (const Point& point : points_) {
        text << "point\t" << point.picture << '\t' << point.xAxis << '\t' << point.yAxis << '\t' << point.curve << '\t'
             << point.x << '\t' << point.y << '\n';
    }
    const std::string all = text.str();
    for (std::size_t done = 0; done < all.size();) {
        const ssize_t written = ::write(fd, all.data() + done, all.size() - done);
        if (written <= 0) {
            ::_exit(1);
        }
        done += static_cast<std::size_t>(written);
    }
}

void Report::receive(int fd) {
    std::string text;
    char bytes[4096];
    for (ssize_t size = 0; (size = ::read(fd, bytes, sizeof bytes)) > 0;) {
        text.append(bytes, static_cast<std::size_t>(size));
    }
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const auto field = fieldsOf(line);
        if (field.at(0) == "row") {
            add(Row{field.at(1),
                    field.at(2),
                    field.at(3),
                    std::stod(field.at(4)),
                    std::stod(field.at(5)),
                    std::stod(field.at(6)),
                    {static_cast<Wanted::Kind>(std::stoi(field.at(7))), std::stod(field.at(8))}});
        } else {
            add(Point{field.at(1), field.at(2), field.at(3), field.at(4), std::stod(field.at(5)),
                      std::stod(field.at(6))});
        }
    }
}

void Report::addFromChild(const std::function<void(Report&)>& work) {
    int ends[2];
    if (::pipe(ends) != 0) {
        throw std::runtime_error("cannot make a pipe");
    }
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child < 0) {
        throw std::runtime_error("cannot start a child process");
    }
    if (child == 0) {
        ::close(ends[0]);
        try {
            Report report;
            work(report);
            report.send(ends[1]);
            ::_exit(0);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
            ::_exit(1);
        }
    }
    ::close(ends[1]);
    receive(ends[0]);
    ::close(ends[0]);
    int status = 0;
    if (::waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error("a child process has failed");
    }
}

} // namespace bench
