#pragma once

// A matrix written out as plainly as it goes, for the literal writing of the calibration: every
// product is a full product, every inverse the textbook's loops.

#include <cmath>
#include <vector>

namespace tiltpole_test {

class PlainMatrix {
 public:
  PlainMatrix() = default;
  explicit PlainMatrix(unsigned int rows) : PlainMatrix(rows, 1) {}
  PlainMatrix(unsigned int rows, unsigned int cols)
      : rows_(rows), cols_(cols), data_(static_cast<std::size_t>(rows) * cols, 0.0) {}

  unsigned int GetRow() const { return rows_; }
  unsigned int GetCol() const { return cols_; }
  double GetData(unsigned int i, unsigned int j) const { return data_[Place(i, j)]; }
  double GetData(unsigned int i) const { return data_[Place(i, 0)]; }
  int SetData(unsigned int i, unsigned int j, double value) {
    if (i >= rows_ || j >= cols_) return 0;
    data_[Place(i, j)] = value;
    return 1;
  }
  int SetData(unsigned int i, double value) { return SetData(i, 0, value); }

  PlainMatrix MatTran() const {
    PlainMatrix result(cols_, rows_);
    for (unsigned int i = 0; i < rows_; ++i) {
      for (unsigned int j = 0; j < cols_; ++j) result.SetData(j, i, GetData(i, j));
    }
    return result;
  }

  PlainMatrix operator*(const PlainMatrix& b) const {
    if (b.rows_ != cols_) return b;
    PlainMatrix result(rows_, b.cols_);
    for (unsigned int i = 0; i < rows_; ++i) {
      for (unsigned int j = 0; j < b.cols_; ++j) {
        double sum = 0.0;
        for (unsigned int k = 0; k < cols_; ++k) sum += GetData(i, k) * b.GetData(k, j);
        result.SetData(i, j, sum);
      }
    }
    return result;
  }

  PlainMatrix MatInv() const {
    PlainMatrix w(rows_, cols_);
    if (rows_ != cols_) return w;
    w = *this;
    const unsigned int n = cols_;
    std::vector<unsigned int> is(n);
    std::vector<unsigned int> js(n);
    for (unsigned int k = 0; k < n; ++k) {
      double maximum = 0.0;
      for (unsigned int i = k; i < n; ++i) {
        for (unsigned int j = k; j < n; ++j) {
          if (std::fabs(w.GetData(i, j)) > maximum) {
            maximum = std::fabs(w.GetData(i, j));
            is[k] = i;
            js[k] = j;
          }
        }
      }
      if (maximum + 1.0 == 1.0) return PlainMatrix();
      if (is[k] != k) w.SwapRows(k, is[k]);
      if (js[k] != k) w.SwapColumns(k, js[k]);
      w.SetData(k, k, 1.0 / w.GetData(k, k));
      for (unsigned int j = 0; j < n; ++j) {
        if (j != k) w.SetData(k, j, w.GetData(k, j) * w.GetData(k, k));
      }
      for (unsigned int i = 0; i < n; ++i) {
        for (unsigned int j = 0; j < n; ++j) {
          if (i != k && j != k) {
            w.SetData(i, j, w.GetData(i, j) - w.GetData(i, k) * w.GetData(k, j));
          }
        }
      }
      for (unsigned int i = 0; i < n; ++i) {
        if (i != k) w.SetData(i, k, -w.GetData(i, k) * w.GetData(k, k));
      }
    }
    for (unsigned int k = n; k-- > 0;) {
      if (js[k] != k) w.SwapRows(k, js[k]);
      if (is[k] != k) w.SwapColumns(k, is[k]);
    }
    return w;
  }

 private:
  std::size_t Place(unsigned int i, unsigned int j) const {
    return static_cast<std::size_t>(i) * cols_ + j;
  }
  void SwapRows(unsigned int a, unsigned int b) {
    for (unsigned int j = 0; j < cols_; ++j) std::swap(data_[Place(a, j)], data_[Place(b, j)]);
  }
  void SwapColumns(unsigned int a, unsigned int b) {
    for (unsigned int i = 0; i < rows_; ++i) std::swap(data_[Place(i, a)], data_[Place(i, b)]);
  }

  unsigned int rows_ = 0;
  unsigned int cols_ = 0;
  std::vector<double> data_;
};

}  // namespace tiltpole_test
