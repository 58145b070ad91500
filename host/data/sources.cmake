# Sources of host/data.
target_sources(goodsbookhost PRIVATE
)
