// Inverse and product beside the same with Eigen's dynamic matrices.

#include <random>

#include <Eigen/Dense>
#include <benchmark/benchmark.h>

#include "tiltpole/matrix/CSZMatrix.h"

namespace {

using tiltpole::CSZMatrix;
using RowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

Eigen::MatrixXd RandomEigen(Eigen::Index order, unsigned seed) {
  std::mt19937 generator(seed);
  std::uniform_real_distribution<double> element(-1.0, 1.0);
  Eigen::MatrixXd matrix(order, order);
  for (Eigen::Index i = 0; i < order; ++i) {
    for (Eigen::Index j = 0; j < order; ++j) matrix(i, j) = element(generator);
  }
  return matrix;
}

CSZMatrix Copy(const Eigen::MatrixXd& from) {
  CSZMatrix matrix(static_cast<unsigned>(from.rows()), static_cast<unsigned>(from.cols()));
  for (unsigned i = 0; i < matrix.GetRow(); ++i) {
    for (unsigned j = 0; j < matrix.GetCol(); ++j) matrix.SetData(i, j, from(i, j));
  }
  return matrix;
}

void Orders(benchmark::internal::Benchmark* benchmark) {
  for (const int order : {3, 6, 12, 24, 100}) benchmark->Arg(order);
}

void Product(benchmark::State& state) {
  const CSZMatrix a = Copy(RandomEigen(state.range(0), 1));
  const CSZMatrix b = Copy(RandomEigen(state.range(0), 2));
  for (auto _ : state) {
    CSZMatrix product = a * b;
    benchmark::DoNotOptimize(product.m_pData);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(Product)->Apply(Orders);

template <class Matrix>
void ProductEigen(benchmark::State& state) {
  const Matrix a = RandomEigen(state.range(0), 1);
  const Matrix b = RandomEigen(state.range(0), 2);
  for (auto _ : state) {
    Matrix product = a * b;
    benchmark::DoNotOptimize(product.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(ProductEigen<Eigen::MatrixXd>)->Apply(Orders);
BENCHMARK(ProductEigen<RowMajor>)->Apply(Orders);

void Inverse(benchmark::State& state) {
  const CSZMatrix a = Copy(RandomEigen(state.range(0), 1));
  for (auto _ : state) {
    CSZMatrix inverse = a.MatInv();
    benchmark::DoNotOptimize(inverse.m_pData);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(Inverse)->Apply(Orders);

template <class Matrix>
void InverseEigen(benchmark::State& state) {
  const Matrix a = RandomEigen(state.range(0), 1);
  for (auto _ : state) {
    Matrix inverse = a.inverse();
    benchmark::DoNotOptimize(inverse.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(InverseEigen<Eigen::MatrixXd>)->Apply(Orders);
BENCHMARK(InverseEigen<RowMajor>)->Apply(Orders);

}  // namespace
