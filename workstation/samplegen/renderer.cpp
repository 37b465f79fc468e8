#include "renderer.h"

#include "noise.h"
#include "phantom.h"

#include <algorithm>
#include <cmath>

namespace {

// Air, Skin, Fat, Muscle, Bone, Marrow, Fluid, Grey, White, Lung, Blood, Liver, Kidney, Spleen, Bowel
constexpr TissueValues hounsfield{-1000, 20, -95, 55, 780, 190, 6, 39, 29, -840, 42, 58, 34, 48, 25};
constexpr TissueValues t1Brightness{6, 420, 980, 380, 30, 620, 150, 440, 640, 30, 90, 480, 400, 360, 330};
constexpr TissueValues t2Brightness{6, 300, 520, 170, 25, 430, 1050, 560, 410, 30, 60, 240, 520, 420, 460};
constexpr TissueValues protonBrightness{6, 500, 260, 480, 40, 330, 900, 500, 480, 30, 80, 400, 500, 420, 420};

using Modifier = TissueValues;

Modifier withContrast(Modifier values, float contrast)
{
    values[static_cast<std::size_t>(Tissue::Blood)] += contrast;
    values[static_cast<std::size_t>(Tissue::Kidney)] += contrast * 0.75F;
    values[static_cast<std::size_t>(Tissue::Spleen)] += contrast * 0.45F;
    values[static_cast<std::size_t>(Tissue::Liver)] += contrast * 0.28F;
    values[static_cast<std::size_t>(Tissue::Muscle)] += contrast * 0.04F;
    return values;
}

struct Scene
{
    Phantom phantom;
    TissueValues values;
    float noise;
    bool isCt;
};

Scene sceneOf(const SampleSeries &series)
{
    switch (series.picture) {
    case SamplePicture::HeadCt:
        return {Phantom::head(), withContrast(hounsfield, series.contrast), 3.5F, true};
    case SamplePicture::TrunkCt:
        return {Phantom::trunk(), withContrast(hounsfield, series.contrast), 9, true};
    case SamplePicture::HeadT1:
        return {Phantom::head(), t1Brightness, 14, false};
    case SamplePicture::HeadT2:
        return {Phantom::head(), t2Brightness, 16, false};
    case SamplePicture::KneePd:
        return {Phantom::knee(), protonBrightness, 14, false};
    case SamplePicture::SpineT2:
        return {Phantom::trunk(), t2Brightness, 18, false};
    case SamplePicture::ChestX:
    case SamplePicture::Doppler:
        break;
    }
    return {Phantom::trunk(), hounsfield, 0, true};
}

Vector3 placeOf(const SampleSeries &series, int slice, float column, float row)
{
    return firstPixel(series, slice) + series.geometry.row * (column * series.geometry.spacing)
        + series.geometry.column * (row * series.geometry.spacing);
}

/// What the coil nearest to a place picks up: MR images fade towards the middle.
float coil(int column, int row)
{
    const float x = float(column) / sampleSide - 0.5F;
    const float y = float(row) / sampleSide - 0.5F;
    return 0.9F + 0.35F * (x * x + y * y) + 0.06F * y;
}

SampleImage renderSection(const SampleSeries &series, int slice)
{
    const Scene scene = sceneOf(series);
    SampleImage image{sampleSide, sampleSide, false, {}, {}};
    image.grey.reserve(sampleSide * sampleSide);
    for (int row = 0; row < sampleSide; ++row) {
        for (int column = 0; column < sampleSide; ++column) {
            const Vector3 place = placeOf(series, slice, float(column), float(row));
            float value = scene.phantom.at(place, scene.values, series.geometry.spacing * 1.2F);
            const float noise = Noise::white(column, row, slice + int(series.picture) * 101)
                + Noise::white(column, row, slice + 7001 + int(series.picture) * 101);
            value = scene.isCt ? value + noise * scene.noise
                               : std::max(0.0F, value * coil(column, row) + noise * scene.noise);
            const int stored = std::clamp(int(std::lround(value)), scene.isCt ? -1024 : 0, 3071);
            image.grey.append(quint16(qint16(stored)));
        }
    }
    return image;
}

/// A film of the chest: what passes along each line from back to front.
SampleImage renderProjection(const SampleSeries &series)
{
    constexpr float step = 3;
    constexpr int samples = 85;
    const Phantom phantom = Phantom::trunk();
    SampleImage image{sampleSide, sampleSide, false, {}, {}};
    image.grey.reserve(sampleSide * sampleSide);
    for (int row = 0; row < sampleSide; ++row) {
        for (int column = 0; column < sampleSide; ++column) {
            const Vector3 start = placeOf(series, 0, float(column), float(row));
            float water = 0;
            for (int sample = 0; sample < samples; ++sample) {
                const float y = (float(sample) - float(samples - 1) / 2) * step;
                const float hu = phantom.at({start.x, y, start.z}, hounsfield, 2);
                water += std::max(0.0F, 1 + hu / 1000) * step;
            }
            const float grain = Noise::white(column, row, 5) * 14;
            const float value = 3800 * (1 - std::exp(-water / 120)) + grain;
            image.grey.append(quint16(std::clamp(int(std::lround(value)), 0, 4095)));
        }
    }
    return image;
}

struct EchoPlace
{
    float x; ///< millimetres from the middle
    float depth; ///< millimetres below the probe
    bool inFan;
    float radius;
    float angle;
};

EchoPlace echoPlace(int column, int row)
{
    const float x = (float(column) - sampleSide / 2.0F) * 0.75F;
    const float y = float(row) * 0.75F + 24;
    const float radius = std::sqrt(x * x + y * y);
    const float angle = std::atan2(x, y);
    return {x, y - 24, radius > 34 && radius < 200 && std::fabs(angle) < 0.62F, radius, angle};
}

/// A heart's four chambers, seen from its tip: how bright each place sends the echo back.
float echoOf(const EchoPlace &place, float beat)
{
    const auto inside = [&place](float x, float y, float width, float height) {
        const float dx = (place.x - x) / width;
        const float dy = (place.depth - y) / height;
        return std::sqrt(dx * dx + dy * dy);
    };
    const float ventricle = 1 - 0.16F * beat;
    float echo = 0.32F;
    const float wall = inside(0, 84, 62, 74);
    if (wall < 1) {
        echo = 0.72F;
    }
    const float chambers = std::min({inside(22, 66, 19 * ventricle, 36 * ventricle),
        inside(-20, 68, 16 * ventricle, 33 * ventricle), inside(23, 126, 20, 22), inside(-22, 126, 19, 20)});
    if (chambers < 1) {
        echo = 0.05F;
    }
    if (std::fabs(place.depth - 104 + 0.12F * place.x) < 2 && std::fabs(place.x) < 44) {
        echo = 0.95F;
    }
    return echo;
}

SampleImage renderDoppler(int slice, int slices)
{
    const float beat = 0.5F - 0.5F * std::cos(6.2831853F * float(slice) / float(slices));
    SampleImage image{sampleSide, sampleSide, true, {}, {}};
    image.colours.reserve(sampleSide * sampleSide * 3);
    for (int row = 0; row < sampleSide; ++row) {
        for (int column = 0; column < sampleSide; ++column) {
            const EchoPlace place = echoPlace(column, row);
            float red = 0;
            float green = 0;
            float blue = 0;
            if (place.inFan) {
                const float speckle =
                    Noise::smooth({place.radius * 0.55F, place.angle * 70, float(slice) * 0.7F});
                const float fade = 1 - 0.0022F * place.radius;
                const float grey = 225 * echoOf(place, beat) * (0.62F + 0.55F * std::fabs(speckle)) * fade;
                red = green = blue = grey;
                const float dx = (place.x - 22) / 13;
                const float dy = (place.depth - 92) / 34;
                const float flow = (1 - dx * dx - dy * dy) * (2 * beat - 1);
                if (std::fabs(flow) > 0.12F && dx * dx + dy * dy < 1) {
                    const float speed = std::min(1.0F, std::fabs(flow) + 0.25F * speckle);
                    red = flow > 0 ? 255 * (0.45F + 0.55F * speed) : 20;
                    blue = flow < 0 ? 255 * (0.45F + 0.55F * speed) : 20;
                    green = 210 * speed * speed;
                }
            }
            for (const float channel : {red, green, blue}) {
                image.colours.append(char(uchar(std::clamp(channel, 0.0F, 255.0F))));
            }
        }
    }
    return image;
}

} // namespace

Vector3 sliceCentre(const SampleSeries &series, int slice)
{
    const Vector3 &r = series.geometry.row;
    const Vector3 &c = series.geometry.column;
    const Vector3 normal{r.y * c.z - r.z * c.y, r.z * c.x - r.x * c.z, r.x * c.y - r.y * c.x};
    return series.geometry.centre
        + normal * ((float(slice) - float(series.slices - 1) / 2) * series.geometry.gap);
}

Vector3 firstPixel(const SampleSeries &series, int slice)
{
    const float half = float(sampleSide - 1) / 2 * series.geometry.spacing;
    return sliceCentre(series, slice) - series.geometry.row * half - series.geometry.column * half;
}

SampleImage renderSlice(const SampleSeries &series, int slice)
{
    switch (series.picture) {
    case SamplePicture::ChestX:
        return renderProjection(series);
    case SamplePicture::Doppler:
        return renderDoppler(slice, series.slices);
    default:
        return renderSection(series, slice);
    }
}
