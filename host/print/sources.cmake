# Sources of host/print.
target_sources(goodsbookhost PRIVATE
)
