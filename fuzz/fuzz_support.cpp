#include "fuzz_support.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

#include "commands/commands.h"

namespace tobel::fuzz {

const std::string& work_dir()
{
    static const std::string dir = [] {
        const auto d = std::filesystem::temp_directory_path() / ("tobel-fuzz-" + std::to_string(::getpid()));
        std::filesystem::create_directories(d);
        std::filesystem::current_path(d);
        return d.string();
    }();
    return dir;
}

std::string input_file(const std::string& name, const std::uint8_t* data, std::size_t size)
{
    const std::string path = work_dir() + "/" + name;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(data), std::streamsize(size));
    return path;
}

void load_main_window(Project& p)
{
    main_load(p);
}

static void require(bool ok, const char* where, const char* what)
{
    if (ok)
        return;
    std::fprintf(stderr, "%s: %s is not a finite number\n", where, what);
    std::abort();
}

template <class G> static bool all_finite(const G& g)
{
    for (const auto x : g.v)
        if (!std::isfinite(double(x)))
            return false;
    return true;
}

void require_finite_results(const Project& p, const char* where)
{
    require(std::isfinite(p.factor_of_safety), where, "factor_of_safety");
    require(std::isfinite(p.janbu_fos), where, "janbu_fos");
    require(std::isfinite(p.slide_weight), where, "slide_weight");
    require(std::isfinite(p.slide_area), where, "slide_area");
    require(std::isfinite(p.slide_volume), where, "slide_volume");
    require(std::isfinite(p.lambda_coef), where, "lambda_coef");
    require(std::isfinite(p.neg_normal_sum), where, "neg_normal_sum");
    require(std::isfinite(p.lateral_unbalance), where, "lateral_unbalance");
    require(all_finite(p.col_weight), where, "col_weight");
    require(all_finite(p.col_area), where, "col_area");
    require(all_finite(p.col_pore), where, "col_pore");
    require(all_finite(p.col_phi), where, "col_phi");
    require(all_finite(p.col_cohesion), where, "col_cohesion");
    require(all_finite(p.col_cos_gamma), where, "col_cos_gamma");
    require(all_finite(p.col_normal), where, "col_normal");
    require(all_finite(p.col_fos), where, "col_fos");
}

} // namespace tobel::fuzz
