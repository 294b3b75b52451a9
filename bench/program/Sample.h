// Values of one quantity, measured again and again.
#pragma once

#include <vector>

namespace bench {

using Sample = std::vector<double>;

// The smallest value that share (0 to 1) of the values don't exceed. 0 of no values.
double Percentile(Sample sample, double share);

double Median(const Sample& sample);

} // namespace bench
