# The analysis of each data type over 10 million in-memory samples.
tavrel_bench(analysis_bench SOURCES analysis_bench.cc DEPS tavrel_analysis)
