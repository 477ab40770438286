cd /tmp/p/fz
ASAN_OPTIONS=detect_leaks=0:allocator_may_return_null=1 nice build/fuzz/tests/fuzz/fuzz_picture -dict=tests/fuzz/picture.dict -rss_limit_mb=2048 -malloc_limit_mb=4096 -timeout=10 -max_len=4096 -max_total_time=$1 -print_final_stats=1 seen tests/fuzz/pictures > fuzz_$2.log 2>&1
