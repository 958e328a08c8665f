#pragma once

// A second, plain writing of the matrix, to hold the library's against bit for bit: every element
// loop as its procedure reads, with the object's own cursors, no tiles, no fused passes. It has no
// storage that could fail, and zero where the library's elements are not set.

#include <cmath>
#include <cstdint>
#include <ostream>
#include <utility>
#include <vector>

#include "support/same_bits.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace tiltpole_test {

class LiteralMatrix {
 public:
  std::vector<double> data;
  std::uint32_t rows = 0;
  std::uint32_t cols = 0;
  mutable std::uint32_t i = 0;
  mutable std::uint32_t j = 0;
  mutable int ok = 0;

  LiteralMatrix() = default;
  LiteralMatrix(std::uint32_t r, std::uint32_t c)
      : data(std::size_t{r} * c), rows(r), cols(c), ok(r != 0 && c != 0 ? 1 : 0) {}
  LiteralMatrix(const LiteralMatrix& other) : LiteralMatrix(other.rows, other.cols) {
    for (i = 0; i < rows; ++i) {
      for (j = 0; j < cols; ++j) At(i, j) = other.At(i, j);
    }
  }
  ~LiteralMatrix() = default;

  double& At(std::uint32_t r, std::uint32_t c) { return data[std::size_t{r} * cols + c]; }
  double At(std::uint32_t r, std::uint32_t c) const { return data[std::size_t{r} * cols + c]; }

  LiteralMatrix& operator=(const LiteralMatrix& other) {
    if (rows != other.rows || cols != other.cols) {
      rows = other.rows;
      cols = other.cols;
      data.assign(std::size_t{rows} * cols, 0.0);
    }
    for (i = 0; i < rows; ++i) {
      for (j = 0; j < cols; ++j) At(i, j) = other.At(i, j);
    }
    return *this;
  }

  void Fill(double v) {
    for (i = 0; i < rows; ++i) {
      for (j = 0; j < cols; ++j) At(i, j) = v;
    }
  }

  template <class Operation>
  LiteralMatrix Combined(const LiteralMatrix& b, Operation operation) const {
    if (rows != b.rows || cols != b.cols) {
      ok = 0;
      return b;
    }
    LiteralMatrix result(rows, cols);
    for (i = 0; i < rows; ++i) {
      for (j = 0; j < cols; ++j) result.At(i, j) = operation(At(i, j), b.At(i, j));
    }
    ok = 1;
    return result;
  }
  LiteralMatrix operator+(const LiteralMatrix& b) const {
    return Combined(b, [](double x, double y) { return x + y; });
  }
  LiteralMatrix operator-(const LiteralMatrix& b) const {
    return Combined(b, [](double x, double y) { return x - y; });
  }

  LiteralMatrix operator*(const LiteralMatrix& b) const {
    ok = 0;
    if (b.rows != cols) return b;
    LiteralMatrix result(rows, b.cols);
    for (std::uint32_t r = 0; r < rows; ++r) {
      for (std::uint32_t c = 0; c < b.cols; ++c) {
        double sum = 0.0;
        for (std::uint32_t k = 0; k < cols; ++k) sum = sum + At(r, k) * b.At(k, c);
        result.At(r, c) = sum;
      }
    }
    return result;
  }

  template <class Operation>
  LiteralMatrix Mapped(Operation operation) const {
    LiteralMatrix result(rows, cols);
    for (i = 0; i < rows; ++i) {
      for (j = 0; j < cols; ++j) result.At(i, j) = operation(At(i, j));
    }
    ok = 1;
    return result;
  }
  LiteralMatrix operator+(double s) const {
    return Mapped([s](double x) { return x + s; });
  }
  LiteralMatrix operator-(double s) const {
    return Mapped([s](double x) { return x - s; });
  }
  LiteralMatrix operator*(double s) const {
    return Mapped([s](double x) { return x * s; });
  }

  int operator+=(const LiteralMatrix& b) {
    if (rows != b.rows || cols != b.cols) return 0;
    for (i = 0; i < rows; ++i) {
      for (j = 0; j < cols; ++j) At(i, j) = At(i, j) + b.At(i, j);
    }
    return 1;
  }
  int operator-=(const LiteralMatrix& b) {
    if (rows != b.rows || cols != b.cols) return 0;
    for (i = 0; i < rows; ++i) {
      for (j = 0; j < cols; ++j) At(i, j) = At(i, j) - b.At(i, j);
    }
    return 1;
  }
  int operator+=(double s) {
    for (i = 0; i < rows; ++i) {
      for (j = 0; j < cols; ++j) At(i, j) = At(i, j) + s;
    }
    return 1;
  }
  int operator-=(double s) {
    for (i = 0; i < rows; ++i) {
      for (j = 0; j < cols; ++j) At(i, j) = At(i, j) - s;
    }
    return 1;
  }

  int Diagonal(double v) {
    if (rows == 0 || cols == 0) return 0;
    const std::uint32_t m = rows < cols ? rows : cols;
    for (i = 0; i < m; ++i) {
      for (j = 0; j < m; ++j) At(i, j) = i == j ? v : 0.0;
    }
    return 1;
  }

  int Symmetry() {
    if (rows != cols) return 0;
    for (i = 0; i < rows; ++i) {
      for (j = i; j < cols; ++j) At(j, i) = At(i, j);
    }
    return 1;
  }

  double Trace() const {
    ok = rows == cols ? 1 : 0;
    double sum = 0.0;
    if (ok == 1) {
      for (i = 0; i < rows; ++i) sum = sum + At(i, i);
    }
    return sum;
  }

  LiteralMatrix Slice(int r0, int c0, int r1, int c1) const {
    LiteralMatrix block(static_cast<std::uint32_t>(r1 - r0 + 1),
                        static_cast<std::uint32_t>(c1 - c0 + 1));
    for (i = 0; i < rows; ++i) {
      for (j = 0; j < cols; ++j) {
        const int r = static_cast<int>(i);
        const int c = static_cast<int>(j);
        if (r < r0 || r > r1 || c < c0 || c > c1) continue;
        block.At(static_cast<std::uint32_t>(r - r0), static_cast<std::uint32_t>(c - c0)) = At(i, j);
      }
    }
    return block;
  }

  LiteralMatrix MatTran() const {
    LiteralMatrix result(cols, rows);
    for (i = 0; i < rows; ++i) {
      for (j = 0; j < cols; ++j) result.At(j, i) = At(i, j);
    }
    return result;
  }

  LiteralMatrix MatInv() const {
    LiteralMatrix w(rows, cols);
    ok = 0;
    if (rows != cols) return w;
    w = *this;
    const std::uint32_t n = cols;
    std::vector<std::uint32_t> is(n);
    std::vector<std::uint32_t> js(n);
    for (std::uint32_t k = 0; k < n; ++k) {
      double maximum = 0.0;
      for (std::uint32_t r = k; r < n; ++r) {
        for (std::uint32_t c = k; c < n; ++c) {
          if (std::fabs(w.At(r, c)) > maximum) {
            maximum = std::fabs(w.At(r, c));
            is[k] = r;
            js[k] = c;
          }
        }
      }
      if (maximum + 1.0 == 1.0) return LiteralMatrix();
      w.SwapRows(k, is[k]);
      w.SwapColumns(k, js[k]);
      w.At(k, k) = 1.0 / w.At(k, k);
      for (std::uint32_t c = 0; c < n; ++c) {
        if (c != k) w.At(k, c) = w.At(k, c) * w.At(k, k);
      }
      for (std::uint32_t r = 0; r < n; ++r) {
        for (std::uint32_t c = 0; c < n; ++c) {
          if (r != k && c != k) w.At(r, c) = w.At(r, c) - w.At(r, k) * w.At(k, c);
        }
      }
      for (std::uint32_t r = 0; r < n; ++r) {
        if (r != k) w.At(r, k) = -w.At(r, k) * w.At(k, k);
      }
    }
    for (std::uint32_t k = n; k-- > 0;) {
      w.SwapRows(k, js[k]);
      w.SwapColumns(k, is[k]);
    }
    return w;
  }

  LiteralMatrix Reverse() const {
    LiteralMatrix r(rows, cols);
    ok = 0;
    if (rows != cols) return r;
    const std::uint32_t n = rows;
    if (n == 1) {
      r.At(0, 0) = 1.0 / At(0, 0);
    } else if (n == 2) {
      const double det = At(0, 0) * At(1, 1) - At(0, 1) * At(1, 0);
      r.At(0, 0) = At(1, 1) / det;
      r.At(0, 1) = -At(0, 1) / det;
      r.At(1, 0) = -At(1, 0) / det;
      r.At(1, 1) = At(0, 0) / det;
    } else {
      r = *this;
      for (i = 0; i < n; ++i) {
        for (j = i; j < n; ++j) {
          for (std::uint32_t k = 0; k < i; ++k) {
            r.At(i, j) = r.At(i, j) - r.At(k, i) * r.At(k, j);
          }
          if (j == i) {
            r.At(i, i) = std::sqrt(r.At(i, i));
          } else {
            r.At(i, j) = r.At(i, j) / r.At(i, i);
          }
        }
      }
      for (i = 0; i < n; ++i) {
        r.At(i, i) = 1.0 / r.At(i, i);
        for (j = i + 1; j < n; ++j) {
          double s = 0.0;
          for (std::uint32_t k = i; k < j; ++k) s = s - r.At(i, k) * r.At(k, j);
          r.At(i, j) = s / r.At(j, j);
        }
      }
      for (i = 0; i < n; ++i) {
        for (j = i; j < n; ++j) {
          double s = 0.0;
          for (std::uint32_t k = j; k < n; ++k) s = s + r.At(i, k) * r.At(j, k);
          r.At(i, j) = s;
        }
      }
      for (i = 0; i < n; ++i) {
        for (j = i; j < n; ++j) r.At(j, i) = r.At(i, j);
      }
    }
    ok = 1;
    return r;
  }

  LiteralMatrix matChole(int* positive_definite) const {
    *positive_definite = 1;
    const std::uint32_t n = cols;
    LiteralMatrix l(n, n);
    for (std::uint32_t r = 0; r < n; ++r) {
      for (std::uint32_t c = r; c < n; ++c) {
        double s = At(r, c);
        for (int k = static_cast<int>(r) - 1; k >= 0; --k) {
          s = s - l.At(r, static_cast<std::uint32_t>(k)) * l.At(c, static_cast<std::uint32_t>(k));
        }
        if (r == c) {
          if (s <= 0.0) {
            *positive_definite = 0;
            l.Fill(0.0);
            for (std::uint32_t d = 0; d < n; ++d) l.At(d, d) = 1.0;
            return l;
          }
          l.At(r, r) = std::sqrt(s);
        } else {
          l.At(c, r) = s / l.At(r, r);
        }
      }
    }
    return l;
  }

 private:
  void SwapRows(std::uint32_t a, std::uint32_t b) {
    if (a == b) return;
    for (std::uint32_t c = 0; c < cols; ++c) std::swap(At(a, c), At(b, c));
  }
  void SwapColumns(std::uint32_t a, std::uint32_t b) {
    if (a == b) return;
    for (std::uint32_t r = 0; r < rows; ++r) std::swap(At(r, a), At(r, b));
  }
};

inline LiteralMatrix Literal(const tiltpole::CSZMatrix& matrix) {
  LiteralMatrix literal(matrix.GetRow(), matrix.GetCol());
  for (std::uint32_t i = 0; i < literal.rows; ++i) {
    for (std::uint32_t j = 0; j < literal.cols; ++j) literal.At(i, j) = matrix.GetData(i, j);
  }
  return literal;
}

inline tiltpole::CSZMatrix Matrix(const LiteralMatrix& literal) {
  tiltpole::CSZMatrix matrix(literal.rows, literal.cols);
  for (std::uint32_t i = 0; i < literal.rows; ++i) {
    for (std::uint32_t j = 0; j < literal.cols; ++j) matrix.SetData(i, j, literal.At(i, j));
  }
  return matrix;
}

inline bool SameElements(const tiltpole::CSZMatrix& matrix, const LiteralMatrix& literal) {
  if (matrix.GetRow() != literal.rows || matrix.GetCol() != literal.cols) return false;
  for (std::uint32_t i = 0; i < literal.rows; ++i) {
    for (std::uint32_t j = 0; j < literal.cols; ++j) {
      if (!SameBits(matrix.GetData(i, j), literal.At(i, j))) return false;
    }
  }
  return true;
}

inline bool SameElements(const tiltpole::CSZMatrix& a, const tiltpole::CSZMatrix& b) {
  return SameElements(a, Literal(b));
}

// Elements, flag and cursors.
inline bool SameState(const tiltpole::CSZMatrix& matrix, const LiteralMatrix& literal) {
  return SameElements(matrix, literal) && matrix.m_bOK == literal.ok && matrix.m_i == literal.i &&
         matrix.m_j == literal.j;
}

inline std::ostream& operator<<(std::ostream& out, const LiteralMatrix& literal) {
  out << literal.rows << " x " << literal.cols << " {";
  for (const double element : literal.data) out << ' ' << std::hexfloat << element;
  return out << " }";
}

}  // namespace tiltpole_test

namespace tiltpole {

// How GoogleTest prints a matrix.
inline void PrintTo(const CSZMatrix& matrix, std::ostream* out) {
  *out << tiltpole_test::Literal(matrix) << ", status " << matrix.m_bOK << ", cursors "
       << matrix.m_i << ' ' << matrix.m_j;
}

}  // namespace tiltpole
