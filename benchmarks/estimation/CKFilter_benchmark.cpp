// One filter step beside the same written with Eigen's dynamic matrices.

#include <Eigen/Dense>
#include <benchmark/benchmark.h>

#include "tiltpole/estimation/CKFilter.h"

namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;
using tiltpole::CKFilter;
using tiltpole::CSZMatrix;

CSZMatrix ScaledIdentity(unsigned order, double value) {
  CSZMatrix matrix(order, order);
  matrix.Diagonal(value);
  return matrix;
}

void FilterStep(benchmark::State& state) {
  const auto order = static_cast<unsigned>(state.range(0));
  const CSZMatrix one = ScaledIdentity(order, 1.0);
  const CSZMatrix zero(order, order);
  CKFilter filter;
  filter.SetMatrixOrder(static_cast<int>(order), static_cast<int>(order));
  filter.SetSystemMatrix(one, zero, one, one, zero);
  filter.SetNoise(ScaledIdentity(order, 16.0), ScaledIdentity(order, 16.0));
  filter.SetInitialData(CSZMatrix(order), ScaledIdentity(order, 25.0));
  CSZMatrix z(order);
  z = 1.5;
  const CSZMatrix u(order);
  for (auto _ : state) {
    CSZMatrix x = filter.Filter(z, u, 0);
    benchmark::DoNotOptimize(x.m_pData);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(FilterStep)->Arg(1)->Arg(3)->Arg(6)->Arg(12);

struct EigenFilter {
  MatrixXd Phi, B, H, D, G, R, Q, P;
  VectorXd x;

  // Takes its arguments by value and evaluates each step into a matrix, as a host would write it.
  // NOLINTNEXTLINE(performance-unnecessary-value-param)
  VectorXd Filter(VectorXd z, VectorXd u) {
    const MatrixXd predicted_P = Phi * P * Phi.transpose() + G * Q * G.transpose();
    const MatrixXd S = H * predicted_P * H.transpose() + R;
    const MatrixXd K = predicted_P * H.transpose() * S.inverse();
    P = (MatrixXd::Identity(x.size(), x.size()) - K * H) * predicted_P;
    const VectorXd predicted_x = Phi * x + B * u;
    x = predicted_x + K * (z - D * u - H * predicted_x);
    return x;
  }
};

void FilterStepEigen(benchmark::State& state) {
  const Eigen::Index order = state.range(0);
  const MatrixXd one = MatrixXd::Identity(order, order);
  const MatrixXd zero = MatrixXd::Zero(order, order);
  EigenFilter filter{
      one, zero, one, zero, one, 16.0 * one, 16.0 * one, 25.0 * one, VectorXd::Zero(order)};
  const VectorXd z = VectorXd::Constant(order, 1.5);
  const VectorXd u = VectorXd::Zero(order);
  for (auto _ : state) {
    VectorXd x = filter.Filter(z, u);
    benchmark::DoNotOptimize(x.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(FilterStepEigen)->Arg(1)->Arg(3)->Arg(6)->Arg(12);

}  // namespace
