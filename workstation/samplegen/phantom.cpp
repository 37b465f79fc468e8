#include "phantom.h"

#include "noise.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float degree = 3.14159265F / 180;

void addRibs(QVector<Organ> &organs)
{
    constexpr int pieces = 26;
    for (int rib = 0; rib < 7; ++rib) {
        for (int piece = 0; piece < pieces; ++piece) {
            const float angle = 360.0F / pieces * float(piece) + 7;
            const float front = -std::sin(angle * degree);
            const Vector3 centre{135 * std::cos(angle * degree), 5 + 88 * std::sin(angle * degree),
                float(rib) * 24 - 18 - 26 * front};
            organs.append({Tissue::Bone, centre, {19, 5, 6}, angle + 90});
            organs.append({Tissue::Marrow, centre, {15, 2.4F, 3}, angle + 90});
        }
    }
}

void addSpine(QVector<Organ> &organs, float y)
{
    for (int vertebra = -6; vertebra <= 6; ++vertebra) {
        const float z = float(vertebra) * 28;
        organs.append({Tissue::Bone, {0, y, z}, {23, 18, 13}});
        organs.append({Tissue::Marrow, {0, y, z}, {20, 15, 11}, 0, 0, 0.3F});
        organs.append({Tissue::Bone, {0, y + 31, z}, {7, 16, 8}});
        organs.append({Tissue::Bone, {-20, y + 20, z}, {17, 5, 6}, -25});
        organs.append({Tissue::Bone, {20, y + 20, z}, {17, 5, 6}, 25});
    }
    organs.append({Tissue::Fluid, {0, y + 22, 0}, {9, 8, 900}});
    organs.append({Tissue::WhiteMatter, {0, y + 22, 0}, {5, 4, 900}});
}

void addPaired(QVector<Organ> &organs, const Organ &right)
{
    Organ left = right;
    left.centre.x = -right.centre.x;
    left.turn = -right.turn;
    organs.append(right);
    organs.append(left);
}

} // namespace

Phantom::Phantom(const QVector<Organ> &organs)
{
    m_shapes.reserve(organs.size());
    for (const Organ &organ : organs) {
        const auto [smallest, largest] = std::minmax({organ.radii.x, organ.radii.y, organ.radii.z});
        m_shapes.append({organ, largest * (1 + organ.folds) + 5, smallest, std::cos(organ.turn * degree),
            std::sin(organ.turn * degree)});
    }
}

/// How far inside (positive) or outside the surface a place lies, in millimetres near the surface.
float Phantom::Shape::depth(const Vector3 &place) const
{
    const Vector3 from = place - organ.centre;
    if (std::fabs(from.x) > reach || std::fabs(from.y) > reach || std::fabs(from.z) > reach) {
        return -smallest;
    }
    const float x = (cosine * from.x + sine * from.y) / organ.radii.x;
    const float y = (cosine * from.y - sine * from.x) / organ.radii.y;
    const float z = from.z / organ.radii.z;
    const float radius = std::sqrt(x * x + y * y + z * z);
    float limit = 1;
    if (organ.folds > 0 && std::fabs(radius - 1) < organ.folds * 1.5F) {
        // Ridges: the fold of a noise about zero is sharp at the bottom, as a sulcus is.
        const float wave = Noise::smooth(place * 0.11F) + 0.5F * Noise::smooth(place * 0.23F);
        limit += organ.folds * (std::min(std::fabs(wave), 1.0F) * 2 - 1);
    }
    return (limit - radius) * smallest;
}

Phantom Phantom::head()
{
    QVector<Organ> organs{
        {Tissue::Skin, {0, 0, 0}, {78, 99, 104}},
        {Tissue::Fat, {0, 0, 0}, {75, 96, 101}},
        {Tissue::Bone, {0, 0, 2}, {72, 92, 97}},
        {Tissue::Marrow, {0, 0, 2}, {69.5F, 89.5F, 94.5F}, 0, 0, 0.4F},
        {Tissue::Bone, {0, 0, 2}, {68, 88, 93}},
        {Tissue::Fluid, {0, 0, 4}, {65, 85, 89}},
        {Tissue::GreyMatter, {-31, 0, 8}, {31, 79, 77}, 1, 0.07F, 0.12F},
        {Tissue::GreyMatter, {31, 0, 8}, {31, 79, 77}, -1, 0.07F, 0.12F},
        {Tissue::WhiteMatter, {-29, 0, 8}, {23, 66, 64}, 2, 0.16F, 0.08F},
        {Tissue::WhiteMatter, {29, 0, 8}, {23, 66, 64}, -2, 0.16F, 0.08F},
        {Tissue::WhiteMatter, {0, -2, 14}, {18, 34, 10}},
    };
    addPaired(organs, {Tissue::GreyMatter, {15, 2, 6}, {11, 19, 13}, 18});
    addPaired(organs, {Tissue::GreyMatter, {22, -20, 10}, {8, 20, 16}, 14});
    addPaired(organs, {Tissue::Fluid, {11, -26, 16}, {5, 21, 10}, 24});
    addPaired(organs, {Tissue::Fluid, {15, 26, 16}, {6, 19, 10}, -22});
    organs += {
        {Tissue::Fluid, {0, 2, 4}, {2.2F, 12, 10}},
        {Tissue::Blood, {0, 78, 20}, {4, 6, 50}},
        {Tissue::GreyMatter, {-20, 46, -42}, {24, 30, 22}, 0, 0.10F, 0.2F},
        {Tissue::GreyMatter, {20, 46, -42}, {24, 30, 22}, 0, 0.10F, 0.2F},
        {Tissue::WhiteMatter, {0, 16, -40}, {15, 17, 34}},
        {Tissue::Fluid, {0, 33, -40}, {5, 5, 12}},
        {Tissue::Bone, {0, -40, -62}, {50, 34, 24}},
        {Tissue::Air, {0, -52, -60}, {13, 26, 24}, 0, 0.1F},
        {Tissue::Bone, {0, -56, -60}, {1.5F, 24, 24}},
    };
    addPaired(organs, {Tissue::Air, {30, -50, -72}, {13, 16, 16}});
    addPaired(organs, {Tissue::Fat, {32, -66, -42}, {19, 26, 18}});
    addPaired(organs, {Tissue::Muscle, {30, -56, -42}, {9, 18, 9}, 10});
    addPaired(organs, {Tissue::Fluid, {32, -76, -42}, {12, 12.5F, 12}});
    addPaired(organs, {Tissue::Muscle, {32, -84, -42}, {5, 3, 5}});
    return Phantom(organs);
}

Phantom Phantom::trunk()
{
    QVector<Organ> organs{
        {Tissue::Skin, {0, 0, 0}, {172, 122, 900}},
        {Tissue::Fat, {0, 0, 0}, {170, 120, 900}, 0, 0, 0.3F},
        {Tissue::Muscle, {0, 2, 0}, {148, 101, 900}, 0, 0, 0.15F},
        {Tissue::Fat, {0, -4, -110}, {128, 76, 120}, 0, 0.08F, 0.4F},
    };
    addPaired(organs, {Tissue::Muscle, {38, 80, 0}, {30, 20, 900}, 0, 0, 0.3F});
    addRibs(organs);
    addPaired(organs, {Tissue::Lung, {68, 4, 92}, {53, 74, 118}, 0, 0, 1.0F});
    organs += {
        {Tissue::Fat, {0, -10, 100}, {30, 62, 80}},
        {Tissue::Muscle, {24, -26, 74}, {50, 40, 46}, 30},
        {Tissue::Blood, {34, -26, 72}, {25, 21, 28}, 30},
        {Tissue::Blood, {4, -34, 76}, {18, 16, 24}},
        {Tissue::Liver, {-58, -6, -22}, {72, 74, 62}, -12, 0, 0.25F},
        {Tissue::Liver, {14, -46, -14}, {54, 32, 36}, 10, 0, 0.25F},
        {Tissue::Blood, {-48, -4, -18}, {24, 5, 5}, 24},
        {Tissue::Blood, {-62, 16, -10}, {5, 22, 5}, 30},
        {Tissue::Fluid, {-44, -48, -50}, {14, 20, 20}, 20},
        {Tissue::Bowel, {62, -42, -34}, {42, 34, 40}, 24, 0.05F, 0.3F},
        {Tissue::Air, {64, -58, -30}, {26, 12, 24}, 24},
        {Tissue::Spleen, {106, 34, -22}, {24, 42, 44}, -24, 0, 0.15F},
        {Tissue::Bowel, {0, -46, -150}, {90, 34, 52}, 0, 0.16F, 0.9F},
        {Tissue::Bowel, {-84, -18, -130}, {24, 26, 70}, 0, 0.10F, 1.0F},
        {Tissue::Bowel, {92, -14, -130}, {22, 26, 70}, 0, 0.10F, 1.0F},
        {Tissue::Air, {-84, -28, -120}, {12, 9, 40}, 0, 0.2F},
    };
    addSpine(organs, 56);
    addPaired(organs, {Tissue::Fat, {66, 48, -84}, {38, 38, 72}});
    addPaired(organs, {Tissue::Kidney, {64, 48, -84}, {25, 31, 56}, 24, 0, 0.1F});
    addPaired(organs, {Tissue::Fat, {52, 44, -84}, {12, 13, 32}, 24});
    addPaired(organs, {Tissue::Muscle, {44, 52, -190}, {19, 24, 90}, 0, 0, 0.2F});
    organs += {
        {Tissue::Blood, {11, 26, 0}, {11.5F, 11.5F, 900}},
        {Tissue::Blood, {-22, 22, 0}, {13, 9.5F, 900}},
        {Tissue::Blood, {12, 6, -40}, {5, 16, 5}},
        {Tissue::Air, {0, 8, 190}, {9, 8, 84}},
        {Tissue::Bone, {0, -94, 110}, {16, 6, 80}},
    };
    return Phantom(organs);
}

Phantom Phantom::knee()
{
    QVector<Organ> organs{
        {Tissue::Skin, {0, 0, 0}, {66, 70, 900}},
        {Tissue::Fat, {0, 0, 0}, {64, 68, 900}, 0, 0, 0.2F},
        {Tissue::Muscle, {0, 30, 90}, {54, 34, 78}, 0, 0.05F, 0.4F},
        {Tissue::Muscle, {0, 32, -90}, {50, 32, 80}, 0, 0.05F, 0.4F},
        {Tissue::Muscle, {0, -34, 106}, {44, 20, 78}, 0, 0.04F, 0.4F},
        {Tissue::Bone, {0, -4, 98}, {19, 19, 120}},
        {Tissue::Marrow, {0, -4, 98}, {15, 15, 116}, 0, 0, 0.2F},
        {Tissue::Bone, {0, -2, -98}, {19, 19, 120}},
        {Tissue::Marrow, {0, -2, -98}, {15, 15, 116}, 0, 0, 0.2F},
    };
    addPaired(organs, {Tissue::Bone, {22, 4, 26}, {25, 30, 26}});
    addPaired(organs, {Tissue::Marrow, {22, 4, 27}, {22.5F, 27.5F, 23.5F}, 0, 0, 0.3F});
    addPaired(organs, {Tissue::Bone, {20, 2, -24}, {27, 28, 20}});
    addPaired(organs, {Tissue::Marrow, {20, 2, -25}, {24.5F, 25.5F, 17.5F}, 0, 0, 0.3F});
    organs += {
        {Tissue::Marrow, {0, 0, 38}, {20, 22, 24}, 0, 0, 0.3F},
        {Tissue::Marrow, {0, 0, -34}, {22, 22, 24}, 0, 0, 0.3F},
        {Tissue::Fluid, {0, -6, 0}, {44, 26, 3.2F}},
        {Tissue::Bone, {0, -46, 26}, {19, 10, 21}},
        {Tissue::Marrow, {0, -46, 26}, {16, 7.5F, 18}, 0, 0, 0.3F},
        {Tissue::Fluid, {0, -34, 30}, {18, 3, 18}},
        {Tissue::Muscle, {0, -55, 72}, {11, 4, 34}},
        {Tissue::Muscle, {0, -48, -20}, {9, 4, 34}},
        {Tissue::Muscle, {0, 6, 2}, {6, 22, 8}, 20},
        {Tissue::Blood, {5, 44, 0}, {5, 5, 900}},
        {Tissue::Blood, {-6, 50, 0}, {4, 4, 900}},
    };
    return Phantom(organs);
}

float Phantom::at(const Vector3 &place, const TissueValues &values, float edge) const
{
    const float contrast = values[static_cast<std::size_t>(Tissue::Muscle)] - values[0];
    float value = values[0];
    for (const Shape &shape : m_shapes) {
        const float share = std::clamp(shape.depth(place) / edge + 0.5F, 0.0F, 1.0F);
        if (share <= 0) {
            continue;
        }
        const Organ &organ = shape.organ;
        float inside = values[static_cast<std::size_t>(organ.tissue)];
        if (organ.grain > 0) {
            const float grain = Noise::smooth(place * 0.16F) + 0.6F * Noise::smooth(place * 0.42F);
            inside += organ.grain * grain * 0.12F * std::min(contrast, 400.0F);
        }
        value += share * (inside - value);
    }
    return value;
}
