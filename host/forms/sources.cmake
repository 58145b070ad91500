# Sources of host/forms.
target_sources(goodsbookhost PRIVATE
  forms/body_params.cpp
)
