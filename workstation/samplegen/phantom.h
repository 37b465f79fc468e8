#pragma once

#include "vector3.h"

#include <QVector>

#include <array>

/// What a place in the body is made of; each kind of image gives it a brightness of its own.
enum class Tissue {
    Air,
    Skin,
    Fat,
    Muscle,
    Bone,
    Marrow,
    Fluid,
    GreyMatter,
    WhiteMatter,
    Lung,
    Blood,
    Liver,
    Kidney,
    Spleen,
    Bowel,
    Count
};

/// Brightness of each tissue, in the order of the enumeration.
using TissueValues = std::array<float, static_cast<std::size_t>(Tissue::Count)>;

/// One ellipsoid of a phantom. Lengths are millimetres.
struct Organ
{
    Tissue tissue;
    Vector3 centre;
    Vector3 radii;
    float turn = 0; ///< about the body's long axis, degrees
    float folds = 0; ///< how far the surface waves in and out, as a share of the radius
    float grain = 0; ///< how much the inside varies, as a share of the contrast
};

/**
 * A body of ellipsoids, painted one over the other, that answers its brightness at any place. A value.
 * Axes are DICOM's: x to the patient's left, y to the back, z to the head; the origin is the body's middle.
 */
class Phantom
{
public:
    explicit Phantom(const QVector<Organ> &organs);

    static Phantom head();
    static Phantom trunk();
    static Phantom knee();

    /// @param edge how soft a surface is, in millimetres
    float at(const Vector3 &place, const TissueValues &values, float edge) const;

private:
    /// An organ with what each question about it needs, worked out once.
    struct Shape
    {
        Organ organ;
        float reach; ///< half the side of a box that holds it
        float smallest; ///< the smallest radius
        float cosine;
        float sine;

        float depth(const Vector3 &place) const;
    };

    QVector<Shape> m_shapes;
};
