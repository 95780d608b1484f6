tavrel_bench(io_bench SOURCES io_bench.cc DEPS tavrel_io)
