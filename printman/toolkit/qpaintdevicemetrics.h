#pragma once

#include <QPaintDevice>

/// The size of a paint device, read once when the object is created.
class QPaintDeviceMetrics {
public:
    /// @param device the device to measure; it is not kept. All sizes of a null device are 0.
    explicit QPaintDeviceMetrics(const QPaintDevice* device)
        : width_(device ? device->width() : 0), height_(device ? device->height() : 0),
          width_mm_(device ? device->widthMM() : 0), height_mm_(device ? device->heightMM() : 0) {}

    int width() const { return width_; }        ///< in device pixels
    int height() const { return height_; }      ///< in device pixels
    int widthMM() const { return width_mm_; }   ///< in millimetres, rounded by the device
    int heightMM() const { return height_mm_; } ///< in millimetres, rounded by the device

private:
    int width_;
    int height_;
    int width_mm_;
    int height_mm_;
};
