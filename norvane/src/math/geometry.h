#ifndef NORVANE_MATH_GEOMETRY_H
#define NORVANE_MATH_GEOMETRY_H

namespace norvane {

template <typename T>
struct basic_Vector2D {
    basic_Vector2D operator+(const basic_Vector2D& other) const { return {x + other.x, y + other.y}; }
    basic_Vector2D operator-(const basic_Vector2D& other) const { return {x - other.x, y - other.y}; }

    T x{}, y{};
};

template <typename T>
struct basic_Vector3D {
    T x{}, y{}, z{};
};

template <typename T>
struct basic_Rect {
    T x{}, y{}, width{}, height{};
};

}  // namespace norvane

#endif
