// An independent slice calculation of Spencer's and the Morgenstern-Price
// method in two dimensions, from the textbook equilibrium of each slice and
// nothing of the program: for a given F, lambda and interslice function it
// marches the interslice thrust across the slices and sums what the whole
// mass is left with.
#pragma once

#include <vector>

namespace tobel::test {

// One vertical slice of unit width across, the mass moving towards -Y.
struct Slice {
    double y = 0;     // position of the slice (its base point and weight line)
    double b = 0;     // width along Y
    double w = 0;     // weight
    double alpha = 0; // dip of the base, positive where it rises with Y
    double zs = 0;    // base elevation at y
    double zg = 0;    // ground elevation at y
    double c = 0;     // cohesion
    double phi = 0;   // friction angle, radians
    double u = 0;     // pore pressure on the base
    double f_in = 1;  // interslice function on the face towards -Y
    double f_out = 1; // on the face towards +Y
};

struct SliceSums {
    double force = 0;           // resisting minus driving along -Y: the thrust left at the last face
    double driving_force = 0;   // sum of the weight's component along the base, on -Y, plus k W
    double moment = 0;          // sum of the anticlockwise (Y right, Z up) moments of all forces
    double driving_moment = 0;  // minus that of the weights and earthquake forces
    std::vector<double> normal; // base normal force N of each slice
};

// Slices in order of Y, the first taking no thrust on its -Y face. Each slice
// carries its weight W at y, an earthquake force k W towards -Y at mid-height,
// the base normal N and the mobilised shear S = (c l + (N - u l) tan phi) / F
// (l = b / cos alpha) at (y, zs), the thrusts E on its faces and the shears
// X = lambda f E with them. Moments are taken about (yo, zo).
SliceSums textbook_spencer(const std::vector<Slice>& slices, double f, double lambda, double k, double yo,
                           double zo);

} // namespace tobel::test
