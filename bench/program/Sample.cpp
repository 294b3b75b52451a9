#include "bench/program/Sample.h"

#include <algorithm>
#include <cmath>

namespace bench {

double Percentile(Sample sample, double share) {
    if (sample.empty())
        return 0;
    std::sort(sample.begin(), sample.end());
    const double rank = std::ceil(share * static_cast<double>(sample.size()));
    return sample[static_cast<std::size_t>(std::max(rank, 1.0)) - 1];
}

double Median(const Sample& sample) { return Percentile(sample, 0.5); }

} // namespace bench
