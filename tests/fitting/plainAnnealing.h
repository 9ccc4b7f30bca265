#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

/// Knuth's subtractive generator as the recurrence that it is, x(n) = x(n-55) - x(n-24) mod 10^9,
/// with the published seeding; nothing in common with the engine's table and its two indices.
class SubtractiveSequence
{
public:
    explicit SubtractiveSequence(int seed)
    {
        long long value = 161803398 - seed;
        long long next = 1;
        history.assign(55, 0);
        history[54] = value;
        for (int i = 1; i <= 54; ++i) {
            const int place = (21 * i) % 55;
            history[std::size_t(place - 1)] = next;
            const long long difference = (value - next + 1000000000) % 1000000000;
            value = next;
            next = difference;
        }
        for (int i = 0; i < 220; ++i)
            draw();
    }
    int draw()
    {
        const std::size_t size = history.size();
        const long long value = (history[size - 55] - history[size - 24] + 1000000000) % 1000000000;
        history.push_back(value);
        return static_cast<int>(value);
    }
    double uniform() { return draw() * 1.0e-9; }

private:
    std::vector<long long> history;
};

/// The whole annealing in the plainest form: every quantity computed where its formula stands.
struct PlainAnnealing
{
    using Response = std::function<double(const std::vector<double> &)>;

    double qA = 2.5;
    double qT = 2.5;
    double qV = 2.5;
    double T0 = 10.0;
    int stepsPerCycle = 15000;

    std::vector<std::vector<double>> visited; ///< every evaluated vector
    std::vector<double> current;
    std::vector<double> best;
    double bestResponse = 0.0;
    int uphill = 0; ///< accepted uphill moves

    void run(const std::vector<double> &start, const Response &response)
    {
        current = start;
        double currentResponse = 0.0;
        for (int cycle = 0; cycle < 15; ++cycle) {
            SubtractiveSequence random(cycle);
            best = current;
            visited.push_back(current);
            const double first = response(current);
            if (cycle == 0)
                currentResponse = bestResponse = first;
            for (int t = 1; t <= stepsPerCycle - 1; ++t) {
                const double T =
                    (std::pow(2.0, qT - 1.0) - 1.0) * T0 / (std::pow(t + 1.0, qT - 1.0) - 1.0);
                std::vector<double> trial = current;
                for (double &x : trial) {
                    const double r = random.uniform();
                    const double s = random.uniform();
                    double step =
                        1.0 / std::pow(1.0 + (qV - 1.0) * (r * r) / std::pow(T, 2.0 / (3.0 - qV)),
                                       1.0 / (qV - 1.0) - 0.5);
                    if (s <= 0.5)
                        step = -step;
                    x = x + step;
                }
                visited.push_back(trial);
                const double E = response(trial);
                if (!(currentResponse < E)) {
                    current = trial;
                    currentResponse = E;
                    if (E <= bestResponse) {
                        bestResponse = E;
                        best = trial;
                    }
                } else if (random.uniform() <
                           1.0 / std::pow(1.0 + (qA - 1.0) * (E - currentResponse) / T,
                                          1.0 / (qA - 1.0))) {
                    current = trial;
                    currentResponse = E;
                    ++uphill;
                }
            }
        }
    }
};
